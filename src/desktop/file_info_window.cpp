// SPDX-License-Identifier: GPL-2.0-or-later
// The window "File info".
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "audio/playback.h"
#include "desktop/dialog_kit.h"
#include "desktop/dialog_windows.h"
#include "desktop/qt_text.h"
#include "edit/editor.h"
#include "frames/frame_header.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

class FileInfoWindow : public DialogWindow {
 public:
  FileInfoWindow(FileInfoDialog& dialog, QWidget* parent)
      : DialogWindow(QStringLiteral("file_info_dialog"),
                     as_qstring(menu_text_plain(ui_text(row::file_info))), parent),
        dialog_(dialog) {
    auto* const columns = new QGridLayout;
    columns->addWidget(summary_group(), 0, 0);
    columns->addWidget(bits_group(), 1, 0);
    columns->addWidget(tag_group(), 0, 1);
    columns->addWidget(save_group(), 1, 1);
    columns->setColumnStretch(1, 1);

    QDialogButtonBox* const buttons = ok_and_cancel();
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { take(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const rows = new QVBoxLayout(this);
    rows->addLayout(columns);
    rows->addWidget(buttons);

    show_tag();
    show_states();
    show_summary();
    connect(&timer_, &QTimer::timeout, this, [this] {
      if (dialog_.editor.playback.is_playing) show_summary();
    });
    timer_.start(500);
  }

 private:
  // File information.

  QGroupBox* summary_group() {
    auto* const group = new QGroupBox(label(row::file_information));
    auto* const grid = new QGridLayout(group);
    int row = 0;
    for (const InfoLine& line :
         file_info_lines(dialog_.editor, play_position(dialog_.editor.playback))) {
      auto* const value = new QLineEdit;  // can be copied, and has its label for screen readers
      value->setReadOnly(true);
      value->setFrame(false);
      value->setMinimumWidth(value->fontMetrics().averageCharWidth() * 26);
      QPalette palette = value->palette();
      palette.setColor(QPalette::Base, Qt::transparent);
      value->setPalette(palette);
      value->setObjectName(QStringLiteral("info_%1").arg(row));
      auto* const words = new QLabel(as_qstring(line.label));
      words->setBuddy(value);
      grid->addWidget(words, row, 0);
      grid->addWidget(value, row, 1);
      values_.push_back(value);
      ++row;
    }
    grid->setVerticalSpacing(1);
    grid->setRowStretch(row, 1);
    return group;
  }

  void show_summary() {
    const std::vector<InfoLine> lines =
        file_info_lines(dialog_.editor, play_position(dialog_.editor.playback));
    for (std::size_t i = 0; i < std::min(lines.size(), values_.size()); ++i) {
      const QString value = as_qstring(lines[i].value);
      values_[i]->setFocusPolicy(value.isEmpty() ? Qt::NoFocus : Qt::StrongFocus);
      if (values_[i]->text() == value) continue;
      values_[i]->setText(value);
      values_[i]->setCursorPosition(0);
    }
    const FrameInfo& frame = dialog_.editor.selection.current_frame;
    current_copyright_->setChecked(frame.copyright != 0);
    current_original_->setChecked(frame.original != 0);
    current_private_->setChecked(frame.private_bit != 0);
    current_crc_->setChecked(frame.has_crc != 0);
  }

  // MPEG header bits: what they are to be, and what they are.

  QGroupBox* bits_group() {
    auto* const group = new QGroupBox(label(row::header_bits));
    auto* const grid = new QGridLayout(group);
    modify_ = new_box(label(row::modify_bits), dialog_.rewrite_header, "rewrite_header");
    connect(modify_, &QCheckBox::toggled, this, [this] { show_states(); });
    grid->addWidget(modify_, 0, 0);
    grid->addWidget(new QLabel(label(row::now)), 0, 1);
    copyright_ = new_box(as_qstring(ui_text(row::copyright)), dialog_.rewrite_copyright,
                         "rewrite_copyright");
    original_ =
        new_box(as_qstring(ui_text(row::original)), dialog_.rewrite_original, "rewrite_original");
    private_ =
        new_box(as_qstring(ui_text(row::private_bit)), dialog_.rewrite_private, "rewrite_private");
    current_copyright_ = new_current(as_qstring(ui_text(row::copyright)), "current_copyright");
    current_original_ = new_current(as_qstring(ui_text(row::original)), "current_original");
    current_private_ = new_current(as_qstring(ui_text(row::private_bit)), "current_private");
    current_crc_ = new_current(QStringLiteral("CRC"), "current_crc");
    int row = 1;
    for (QCheckBox* const box : {copyright_, original_, private_}) grid->addWidget(box, row++, 0);
    row = 1;
    for (QCheckBox* const box :
         {current_copyright_, current_original_, current_private_, current_crc_})
      grid->addWidget(box, row++, 1);
    grid->setRowStretch(row, 1);
    return group;
  }

  static QCheckBox* new_current(const QString& text, const char* name) {
    QCheckBox* const box = new_box(text, false, name);
    box->setEnabled(false);
    box->setAccessibleName(label(row::now).remove(u'&') + QStringLiteral(": ") + text);
    return box;
  }

  // Tag ID3v1.

  QGroupBox* tag_group() {
    auto* const group = new QGroupBox(as_qstring(ui_text(row::tag_id3v1)));
    auto* const grid = new QGridLayout(group);
    QString text = label(row::create_or_use_id3v1);
    create_tag_ = new_box(text, dialog_.tag.create_tag, "create_tag");
    create_tag_->setEnabled(can_create_tag(dialog_.editor.document));
    connect(create_tag_, &QCheckBox::toggled, this, [this] { show_states(); });
    grid->addWidget(create_tag_, 0, 0, 1, 2);
    title_ = new_line({}, id3v1_text_limit);
    artist_ = new_line({}, id3v1_text_limit);
    album_ = new_line({}, id3v1_text_limit);
    year_ = new_line({}, id3v1_year_limit);
    comment_ = new_line({}, id3v1_text_limit);
    track_ = new_line({}, id3v1_track_digits);
    track_->setValidator(new QIntValidator(0, 99, track_));
    genre_ = new_list();
    genre_->addItem({});
    for (const std::string_view name : genre_names()) genre_->addItem(as_qstring(name));
    add_field(*grid, label(row::title), title_, "title");
    add_field(*grid, label(row::artist), artist_, "artist");
    add_field(*grid, label(row::album), album_, "album");
    add_field(*grid, label(row::year), year_, "year");
    add_field(*grid, label(row::comment), comment_, "comment");
    add_field(*grid, label(row::track), track_, "track");
    add_field(*grid, label(row::genre), genre_, "genre");
    names_from_cue_ = new QPushButton(label(row::names_from_cue));
    names_from_cue_->setObjectName(QStringLiteral("names_from_current_cue"));
    names_from_cue_->setAutoDefault(false);
    connect(names_from_cue_, &QPushButton::clicked, this, [this] {
      take_tag();
      names_from_current_cue(dialog_.editor.document, dialog_.tag);
      show_tag();
    });
    grid->addWidget(names_from_cue_, grid->rowCount(), 1);
    return group;
  }

  void show_tag() {
    const auto show = [](QLineEdit* line, const std::u16string& text) {
      line->setText(as_qstring(text));
      line->setCursorPosition(0);
    };
    show(title_, dialog_.tag.title);
    show(artist_, dialog_.tag.artist);
    show(album_, dialog_.tag.album);
    show(year_, dialog_.tag.year);
    show(comment_, dialog_.tag.comment);
    track_->setText(dialog_.tag.track == 0 ? QString() : QString::number(dialog_.tag.track));
    genre_->setCurrentIndex(std::max(genre_->findText(as_qstring(dialog_.tag.genre)), 0));
  }

  void take_tag() {
    dialog_.tag.create_tag = create_tag_->isChecked();
    dialog_.tag.title = title_->text().toStdU16String();
    dialog_.tag.artist = artist_->text().toStdU16String();
    dialog_.tag.album = album_->text().toStdU16String();
    dialog_.tag.year = year_->text().toStdU16String();
    dialog_.tag.comment = comment_->text().toStdU16String();
    dialog_.tag.track = track_->text().toUInt();
    dialog_.tag.genre = as_utf8(genre_->currentText());
  }

  // Save options.

  QGroupBox* save_group() {
    auto* const group = new QGroupBox(label(row::save_options));
    auto* const rows = new QVBoxLayout(group);
    write_xing_ = new_box(label(row::create_vbr_header), dialog_.write_xing, "write_xing");
    keep_info_ = new_box(label(row::keep_info_header), dialog_.keep_info, "keep_info");
    keep_lame_ = new_box(label(row::keep_encoder_data), dialog_.keep_lame, "keep_lame");
    keep_id3v2_ = new_box(label(row::keep_id3v2), dialog_.keep_id3v2, "keep_id3v2");
    for (QCheckBox* const box : {write_xing_, keep_info_, keep_lame_, keep_id3v2_}) {
      box->setEnabled(dialog_.can_edit_boxes);
      rows->addWidget(box);
    }
    rows->addStretch();
    return group;
  }

  // What can be edited as the boxes stand.
  void show_states() {
    dialog_.tag.create_tag = create_tag_->isChecked();
    const bool has_tag = can_edit_tag(dialog_.editor.document, dialog_.tag);
    for (QWidget* const field : std::initializer_list<QWidget*>{
             title_, artist_, album_, year_, comment_, track_, genre_, names_from_cue_})
      field->setEnabled(has_tag);
    dialog_.rewrite_header = modify_->isChecked();
    modify_->setEnabled(dialog_.can_edit_boxes);
    for (QCheckBox* const box : {copyright_, original_, private_})
      box->setEnabled(dialog_.can_edit_bits());
  }

  void take() {
    take_tag();
    dialog_.rewrite_header = modify_->isChecked();
    dialog_.rewrite_copyright = copyright_->isChecked();
    dialog_.rewrite_original = original_->isChecked();
    dialog_.rewrite_private = private_->isChecked();
    dialog_.write_xing = write_xing_->isChecked();
    dialog_.keep_info = keep_info_->isChecked();
    dialog_.keep_lame = keep_lame_->isChecked();
    dialog_.keep_id3v2 = keep_id3v2_->isChecked();
    if (dialog_.accept()) accept();
  }

  FileInfoDialog& dialog_;
  QTimer timer_;
  std::vector<QLineEdit*> values_;
  QCheckBox* modify_ = nullptr;
  QCheckBox* copyright_ = nullptr;
  QCheckBox* original_ = nullptr;
  QCheckBox* private_ = nullptr;
  QCheckBox* current_copyright_ = nullptr;
  QCheckBox* current_original_ = nullptr;
  QCheckBox* current_private_ = nullptr;
  QCheckBox* current_crc_ = nullptr;
  QCheckBox* create_tag_ = nullptr;
  QLineEdit* title_ = nullptr;
  QLineEdit* artist_ = nullptr;
  QLineEdit* album_ = nullptr;
  QLineEdit* year_ = nullptr;
  QLineEdit* comment_ = nullptr;
  QLineEdit* track_ = nullptr;
  QComboBox* genre_ = nullptr;
  QPushButton* names_from_cue_ = nullptr;
  QCheckBox* write_xing_ = nullptr;
  QCheckBox* keep_info_ = nullptr;
  QCheckBox* keep_lame_ = nullptr;
  QCheckBox* keep_id3v2_ = nullptr;
};

}  // namespace

bool show_window(FileInfoDialog& dialog, QWidget* parent) {
  if (FileInfoWindow(dialog, parent).exec() == QDialog::Accepted) return true;
  dialog.cancel();
  return false;
}

}  // namespace corvelin
