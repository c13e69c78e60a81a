// SPDX-License-Identifier: GPL-2.0-or-later
// The window of the batch: the list of files, what is to be done with them, where the results go,
// and what became of them.
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QStyle>
#include <QTimer>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "desktop/dialog_kit.h"
#include "desktop/dialog_windows.h"
#include "desktop/qt_text.h"
#include "platform/files/file.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

QString as_shown(const std::string& path) { return QFile::decodeName(path.c_str()); }

std::string as_path(const QString& text) { return QFile::encodeName(text).toStdString(); }

// The files in their order. Dragged ones go in front of the one under the pointer, and Alt with an
// arrow key moves them by a row. A folder dropped from another program becomes the one of the list,
// and so does that of dropped files, which are then the selected ones.
class FileList : public QTreeWidget {
 public:
  std::function<void(int row)> move_selected;
  std::function<void(const QList<QUrl>& urls)> take_dropped;

  FileList() {
    setObjectName(QStringLiteral("items"));
    setAccessibleName(label(row::source));
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(ExtendedSelection);
    setDragDropMode(DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    setAutoScrollMargin(20);  // pixels
    setHeaderLabels({label(row::file), label(row::size), label(row::modified)});
    header()->setSectionsClickable(true);
    header()->setSortIndicatorShown(true);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
  }

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override {
    QTreeWidget::dragEnterEvent(event);
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
  }

  void dragMoveEvent(QDragMoveEvent* event) override {
    QTreeWidget::dragMoveEvent(event);
    event->accept();
  }

  void dropEvent(QDropEvent* event) override {
    if (event->source() == this) {
      const QModelIndex under = indexAt(event->position().toPoint());
      event->setDropAction(
          Qt::IgnoreAction);  // the list is filled anew, nothing is to be taken out
      move_selected(under.isValid() ? under.row() : topLevelItemCount());
    } else if (event->mimeData()->hasUrls()) {
      event->acceptProposedAction();
      take_dropped(event->mimeData()->urls());
    }
  }

  void keyPressEvent(QKeyEvent* event) override {
    const QModelIndexList rows = selectionModel()->selectedRows();
    const bool is_up = event->key() == Qt::Key_Up;
    const bool moves = event->modifiers() == Qt::AltModifier && !rows.empty() &&
                       (is_up || event->key() == Qt::Key_Down);
    if (!moves) return QTreeWidget::keyPressEvent(event);
    const auto [first, last] = std::ranges::minmax_element(rows, {}, &QModelIndex::row);
    move_selected(is_up ? std::max(0, first->row() - 1) : last->row() + 2);
  }
};

QString plain(TextRow row) { return as_qstring(menu_text_plain(ui_text(row))); }

QString named(TextRow option, TextRow place) {
  return plain(option) + QStringLiteral(": ") + as_qstring(ui_text(place));
}

class BatchWindow : public DialogWindow {
 public:
  BatchWindow(BatchDialog& dialog, QWidget* parent)
      : DialogWindow(QStringLiteral("batch_dialog"), plain(row::batch_processing), parent),
        dialog_(dialog),
        job_(dialog.job) {
    auto* const right = new QVBoxLayout;
    right->addWidget(action_group());
    right->addWidget(destination_group());
    right->addStretch();
    auto* const top = new QHBoxLayout;
    top->addWidget(source_group(), 1);
    top->addLayout(right);
    auto* const rows = new QVBoxLayout(this);
    rows->addLayout(top, 3);
    rows->addWidget(results_group(), 1);
    rows->addLayout(buttons());
    resize(980, 720);
    show_list();
    show_options();
    show_state();
    dialog_.between_slices = [this] {
      show_results();
      QApplication::processEvents();
      return true;
    };
    // No button is the default one, so that Enter in a field only leaves it.
    for (QPushButton* const button : findChildren<QPushButton*>()) button->setAutoDefault(false);
  }

  // Close, and the window's own button: what is under way is finished first.
  void reject() override {
    dialog_.stop();
    closes_ = true;
    if (!is_stepping_) QDialog::reject();
  }

 protected:
  void closeEvent(QCloseEvent* event) override {
    event->ignore();
    reject();
  }

  void resizeEvent(QResizeEvent* event) override {
    DialogWindow::resizeEvent(event);
    show_destination();
  }

 private:
  QGroupBox* source_group() {
    auto* const group = new QGroupBox(label(row::source));
    auto* const grid = new QGridLayout(group);
    folder_ = new_line(as_shown(job_.source_folder), 396);
    folder_->setAccessibleName(label(row::source));
    folder_->setObjectName(QStringLiteral("source_folder"));
    auto* const choose = new QPushButton(QStringLiteral("..."));
    choose->setObjectName(QStringLiteral("choose_source"));
    choose->setAccessibleName(label(row::source) + QStringLiteral(" ..."));
    choose->setFixedWidth(36);
    mask_ = new_line(as_qstring(job_.mask), 99);
    mask_->setObjectName(QStringLiteral("mask"));
    mask_->setAccessibleName(as_qstring(ui_text(row::mask)));
    mask_->setFixedWidth(fontMetrics().averageCharWidth() * 14);
    grid->addWidget(folder_, 0, 0);
    grid->addWidget(choose, 0, 1);
    grid->addWidget(mask_, 0, 2);
    list_ = new FileList;
    list_->setMinimumWidth(fontMetrics().averageCharWidth() * 50);
    grid->addWidget(list_, 1, 0, 1, 3);
    count_ = new QLabel;
    count_->setObjectName(QStringLiteral("selected"));
    count_->setTextFormat(Qt::PlainText);
    count_->setWordWrap(true);
    grid->addWidget(count_, 2, 0, 1, 3);

    connect(choose, &QPushButton::clicked, this, [this] {
      const QString chosen =
          QFileDialog::getExistingDirectory(this, label(row::source), folder_->text());
      if (!chosen.isEmpty()) take_folder(as_path(chosen));
    });
    for (const QLineEdit* const field : {folder_, mask_}) {
      connect(field, &QLineEdit::editingFinished, this, [this] { take_source(); });
      connect(field, &QLineEdit::textChanged, this, [this, field] {
        if (!field->hasFocus()) take_source();  // by another program, which never leaves the field
      });
    }
    connect(list_, &QTreeWidget::itemSelectionChanged, this, [this] { take_selection(); });
    connect(list_->header(), &QHeaderView::sectionClicked, this, [this](int column) {
      job_.sort_by(static_cast<BatchColumn>(column));
      show_list();
    });
    list_->move_selected = [this](int row) {
      job_.move_selected(static_cast<std::size_t>(row));
      show_list();
      stay_at_selected();
    };
    list_->take_dropped = [this](const QList<QUrl>& urls) { take_dropped(urls); };
    return group;
  }

  void take_source() {
    if (folder_->text() != as_shown(job_.source_folder)) take_folder(as_path(folder_->text()));
    if (mask_->text() == as_qstring(job_.mask)) return;
    job_.mask = as_utf8(mask_->text());
    scan();
  }

  void take_dropped(const QList<QUrl>& urls) {
    const std::string first = as_path(urls.front().toLocalFile());
    if (file_facts(first).is_folder) return take_folder(first);
    take_folder(std::string(folder_of(first)));
    const auto is_dropped = [&](const BatchItem& item) {
      return urls.contains(QUrl::fromLocalFile(as_shown(job_.source_folder + item.name)));
    };
    if (std::ranges::none_of(job_.items, is_dropped)) return;
    for (BatchItem& item : job_.items) item.is_selected = is_dropped(item);
    show_list();
  }

  void take_folder(const std::string& folder) {
    job_.source_folder = folder;
    scan();
  }

  void scan() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    job_.scan_batch_folder();
    show_list();
    QApplication::restoreOverrideCursor();
  }

  QGroupBox* action_group() {
    auto* const group = new QGroupBox(label(row::action));
    auto* const grid = new QGridLayout(group);
    level_ =
        new_slider(Qt::Horizontal, 0, BatchJob::highest_level, job_.batch_level, "batch_level");
    level_->setAccessibleName(label(row::dialog_level));
    level_text_ = new QLabel;
    level_text_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("+48.0 dB ")));
    join_name_ = new_line({}, 396);
    limit_ = seconds_field("limit_seconds", label(row::limit_length));
    cut_begin_ = seconds_field("cut_begin", named(row::cut, row::from_beginning));
    cut_end_ = seconds_field("cut_end", named(row::cut, row::from_end));
    fade_begin_ = seconds_field("fade_begin", named(row::simple_fade, row::from_beginning));
    fade_end_ = seconds_field("fade_end", named(row::simple_fade, row::from_end));
    bottom_ = new QSpinBox;
    bottom_->setObjectName(QStringLiteral("batch_bottom"));
    bottom_->setRange(0, BatchJob::highest_bottom);
    bottom_->setSuffix(QStringLiteral(" dB"));
    bottom_->setValue(job_.usable_bottom());
    join_name_->setObjectName(QStringLiteral("join_name"));
    join_name_->setAccessibleName(label(row::join));

    int row = 0;
    const auto add = [&](BatchOption option, const QString& text, QWidget* first = nullptr,
                         QWidget* second = nullptr) {
      grid->addWidget(option_box(option, text), row, 0, 1, first == nullptr ? -1 : 1);
      if (first != nullptr) grid->addWidget(first, row, 1, 1, second == nullptr ? -1 : 1);
      if (second != nullptr) grid->addWidget(second, row, 2);
      ++row;
    };
    add(BatchOption::only_save, label(row::only_save));
    add(BatchOption::normalize, plain(row::normalize));
    add(BatchOption::level, label(row::dialog_level), level_, level_text_);
    grid->addWidget(new QLabel(label(row::seconds_of_both_ends)), row++, 0, 1, -1);
    add(BatchOption::cut, plain(row::cut), cut_begin_, cut_end_);
    add(BatchOption::simple_fade, plain(row::simple_fade), fade_begin_, fade_end_);
    add(BatchOption::limit_length, label(row::limit_length), limit_);
    add(BatchOption::auto_crop, plain(row::auto_crop));
    auto* const bottom_words = new QLabel(label(row::bottom_level));
    bottom_words->setBuddy(bottom_);
    grid->addWidget(bottom_words, row, 0);
    grid->addWidget(bottom_, row++, 1);
    add(BatchOption::pause_detection, label(row::dialog_pause_detection));
    add(BatchOption::auto_cue, label(row::auto_cue));
    add(BatchOption::join, label(row::join), join_name_);
    add(BatchOption::skip_unchanged, label(row::skip_unchanged));
    fault_ = new QLabel;
    fault_->setObjectName(QStringLiteral("fault"));
    fault_->setTextFormat(Qt::PlainText);
    fault_->setWordWrap(true);
    grid->addWidget(fault_, row, 0, 1, -1);

    connect(level_, &QSlider::valueChanged, this, [this](int value) {
      job_.batch_level = static_cast<std::uint8_t>(value);
      show_level();
    });
    connect(bottom_, &QSpinBox::valueChanged, this,
            [this](int value) { job_.batch_bottom = static_cast<std::uint8_t>(value); });
    const auto bind = [this](QLineEdit* line, std::string BatchJob::*field) {
      connect(line, &QLineEdit::textChanged, this, [this, field](const QString& text) {
        job_.*field = as_path(text);
        show_faults();
      });
    };
    bind(join_name_, &BatchJob::join_name);
    bind(limit_, &BatchJob::limit_seconds);
    bind(cut_begin_, &BatchJob::cut_begin);
    bind(cut_end_, &BatchJob::cut_end);
    bind(fade_begin_, &BatchJob::fade_begin);
    bind(fade_end_, &BatchJob::fade_end);
    return group;
  }

  static QLineEdit* seconds_field(const char* name, const QString& accessible_name) {
    QLineEdit* const line = new_line({}, 7);
    line->setObjectName(QString::fromLatin1(name));
    line->setAccessibleName(accessible_name);
    line->setFixedWidth(line->fontMetrics().averageCharWidth() * 12);
    return line;
  }

  QCheckBox* option_box(BatchOption option, const QString& text) {
    auto* const box = new_box(text, job_.has(option),
                              ("option_" + std::to_string(static_cast<int>(option))).c_str());
    connect(box, &QCheckBox::toggled, this, [this, option](bool is_on) {
      dialog_.choose(option, is_on);
      show_options();
    });
    options_.emplace_back(option, box);
    return box;
  }

  QGroupBox* destination_group() {
    auto* const group = new QGroupBox(label(row::destination));
    auto* const grid = new QGridLayout(group);
    to_folder_ = new QRadioButton;
    to_folder_->setObjectName(QStringLiteral("dest_folder"));
    to_folder_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    overwrite_ = new QRadioButton(label(row::overwrite_originals));
    overwrite_->setObjectName(QStringLiteral("overwrite_originals"));
    auto* const source = new QPushButton(label(row::source));
    source->setObjectName(QStringLiteral("destination_is_source"));
    source->setAccessibleName(label(row::destination) + QStringLiteral(": ") + label(row::source));
    to_folder_->setText(as_qstring(ui_text(row::select_folder)));
    to_folder_->setMinimumWidth(to_folder_->sizeHint().width());  // a path may be wider
    grid->addWidget(to_folder_, 0, 0, 1, 2);
    grid->addWidget(overwrite_, 1, 0);
    grid->addWidget(source, 1, 1, Qt::AlignTrailing);
    connect(overwrite_, &QRadioButton::toggled, this,
            [this](bool is_on) { dialog_.choose(BatchOption::overwrite_originals, is_on); });
    connect(to_folder_, &QRadioButton::clicked, this, [this] {
      if (is_stepping_) return dialog_.stop();
      choose_destination();
    });
    connect(source, &QPushButton::clicked, this, [this] {
      job_.dest_folder.clear();
      show_destination();
    });
    return group;
  }

  void choose_destination() {
    const std::string& start = job_.dest_folder.empty() ? job_.source_folder : job_.dest_folder;
    const QString chosen =
        QFileDialog::getExistingDirectory(this, label(row::destination), as_shown(start));
    if (!chosen.isEmpty()) job_.dest_folder = as_path(chosen);
    show_destination();
  }

  QGroupBox* results_group() {
    auto* const group = new QGroupBox(label(row::results));
    auto* const rows = new QVBoxLayout(group);
    results_ = new QListWidget;
    results_->setObjectName(QStringLiteral("results"));
    results_->setAccessibleName(label(row::results));
    results_->setMinimumHeight(results_->fontMetrics().lineSpacing() * 4);
    rows->addWidget(results_);
    return group;
  }

  QHBoxLayout* buttons() {
    auto* const row = new QHBoxLayout;
    const auto button = [row](const QString& text, const char* name) {
      auto* const made = new QPushButton(text);
      made->setObjectName(QString::fromLatin1(name));
      row->addWidget(made);
      return made;
    };
    row->addStretch();
    start_ = button(label(row::start), "start");
    stop_ = button(label(row::stop_work), "stop");
    QPushButton* const close = button(label(row::close), "close");
    connect(start_, &QPushButton::clicked, this, [this] { start(); });
    connect(stop_, &QPushButton::clicked, this, [this] { dialog_.stop(); });
    connect(close, &QPushButton::clicked, this, [this] { reject(); });
    return row;
  }

  // Steps the run to its end. The window stays alive between the slices.
  void start() {
    if (is_stepping_) return;
    take_source();  // a key may start the run while the field has the focus
    if (!dialog_.accept()) return go_to_fault();
    is_stepping_ = true;
    show_state();
    results_->clear();
    results_->addItem(QString());
    bool goes_on = true;
    while (goes_on) {
      goes_on = dialog_.run->step();
      show_results();
      QApplication::processEvents();
    }
    is_stepping_ = false;
    show_state();
    if (closes_) QDialog::reject();
  }

  [[nodiscard]] QLineEdit* line_of(BatchField field) const {
    switch (field) {
      case BatchField::source:
        return folder_;
      case BatchField::limit_seconds:
        return limit_;
      case BatchField::cut_begin:
        return cut_begin_;
      case BatchField::cut_end:
        return cut_end_;
      case BatchField::fade_begin:
        return fade_begin_;
      case BatchField::fade_end:
        return fade_end_;
      case BatchField::join_name:
        break;
    }
    return join_name_;
  }

  // What is wrong with the list's own fields stands below the list.
  void show_faults() {
    QString shown;
    for (const BatchField field : batch_fields) {
      const QString fault = as_shown(job_.fault_in(field));
      line_of(field)->setAccessibleDescription(fault);
      if (shown.isEmpty() && field != BatchField::source) shown = fault;
    }
    fault_->setText(shown);
  }

  void go_to_fault() {
    const auto* const field = std::ranges::find_if(
        batch_fields, [this](BatchField each) { return !job_.fault_in(each).empty(); });
    if (field != std::end(batch_fields)) line_of(*field)->setFocus();
  }

  void take_selection() {
    for (int i = 0; i < list_->topLevelItemCount(); ++i)
      job_.items[static_cast<std::size_t>(i)].is_selected = list_->topLevelItem(i)->isSelected();
    show_count();
  }

  void show_list() {
    const QSignalBlocker blocker(list_);
    list_->clear();
    QList<QTreeWidgetItem*> rows;
    for (const BatchItem& item : job_.items) {
      auto* const row = new QTreeWidgetItem(
          {as_shown(item.name), as_qstring(item.size_text), as_qstring(item.date_text)});
      row->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
      row->setFlags(row->flags() & ~Qt::ItemIsDropEnabled);
      rows.push_back(row);
    }
    list_->addTopLevelItems(rows);
    list_->selectionModel()->select(selected_rows(), QItemSelectionModel::ClearAndSelect);
    list_->header()->setSortIndicator(static_cast<int>(job_.sort_column), job_.sort_descending
                                                                              ? Qt::DescendingOrder
                                                                              : Qt::AscendingOrder);
    folder_->setText(as_shown(job_.source_folder));
    show_count();
    show_faults();
  }

  // In as few ranges as can be: the toolkit compares each with each.
  [[nodiscard]] QItemSelection selected_rows() const {
    const auto is_selected = [this](int row) {
      return job_.items[static_cast<std::size_t>(row)].is_selected;
    };
    const QAbstractItemModel& rows = *list_->model();
    QItemSelection selection;
    for (int row = 0; row < rows.rowCount(); ++row) {
      if (!is_selected(row)) continue;
      const int first = row;
      while (row + 1 < rows.rowCount() && is_selected(row + 1)) ++row;
      selection.select(rows.index(first, 0), rows.index(row, 2));
    }
    return selection;
  }

  // Keys go on from the rows that were moved, which stay in sight.
  void stay_at_selected() {
    const auto first = std::ranges::find_if(job_.items, &BatchItem::is_selected);
    if (first == job_.items.end()) return;
    const int row = static_cast<int>(first - job_.items.begin());
    list_->selectionModel()->setCurrentIndex(list_->model()->index(row, 0),
                                             QItemSelectionModel::NoUpdate);
  }

  void show_count() {
    if (!job_.source_fault.empty()) return count_->setText(as_shown(job_.source_fault));
    count_->setText(QStringLiteral("%1 / %2").arg(job_.selected_count()).arg(job_.items.size()));
  }

  void show_options() {
    for (const auto& [option, box] : options_) {
      const QSignalBlocker quiet(box);
      box->setChecked(job_.has(option));
    }
    level_->setEnabled(job_.can_edit_level());
    bottom_->setEnabled(job_.can_edit_bottom());
    join_name_->setEnabled(job_.has(BatchOption::join));
    limit_->setEnabled(job_.has(BatchOption::limit_length));
    for (QLineEdit* const field : {cut_begin_, cut_end_})
      field->setEnabled(job_.has(BatchOption::cut));
    for (QLineEdit* const field : {fade_begin_, fade_end_})
      field->setEnabled(job_.has(BatchOption::simple_fade));
    show_level();
    show_faults();
  }

  void show_level() { show_meaning(*level_, *level_text_, job_.level_text()); }

  void show_destination() {
    const bool overwrites = job_.has(BatchOption::overwrite_originals);
    {
      const QSignalBlocker quiet(overwrite_);
      to_folder_->setChecked(!overwrites);
      overwrite_->setChecked(overwrites);
    }
    const QString text = job_.dest_folder.empty() ? as_qstring(ui_text(row::select_folder))
                                                  : as_shown(job_.dest_folder);
    to_folder_->setAccessibleName(text);
    to_folder_->setToolTip(text);
    // A long path is seen by its two ends.
    const int mark = style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) +
                     style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
    const QString shown =
        fontMetrics().elidedText(text, Qt::ElideMiddle, to_folder_->width() - mark);
    to_folder_->setText(QString(shown).replace(u'&', QStringLiteral("&&")));
  }

  void show_state() {
    const bool is_running = is_stepping_;
    start_->setEnabled(!is_running);
    stop_->setEnabled(is_running);
    for (QWidget* const widget : std::initializer_list<QWidget*>{list_, folder_, mask_})
      widget->setEnabled(!is_running);
    if (auto* const choose = findChild<QPushButton*>(QStringLiteral("choose_source")))
      choose->setEnabled(!is_running);
    // Not to "Start" when it ends: a key that was meant for "Stop" would begin the run once more.
    if (isVisible()) (is_running ? static_cast<QWidget*>(stop_) : results_)->setFocus();
  }

  // Only the first line changes; the others are added to.
  void show_results() {
    results_->item(0)->setText(as_qstring(dialog_.run->progress_text()));
    const std::vector<BatchProblem>& problems = dialog_.run->problems();
    const auto shown = static_cast<std::size_t>(results_->count()) - 1;
    for (std::size_t i = shown; i < problems.size(); ++i) show_problem(problems[i]);
    if (shown < problems.size()) results_->scrollToBottom();
  }

  // The result of its file knows the cause.
  void show_problem(const BatchProblem& problem) {
    const std::vector<BatchResult>& results = dialog_.run->results();
    auto* const row = new QListWidgetItem(as_shown(problem.line), results_);
    if (problem.number == 0 || problem.number > results.size()) return;
    const QString cause = as_shown(results[problem.number - 1].reason);
    row->setToolTip(Qt::convertFromPlainText(cause, Qt::WhiteSpaceNormal));
    row->setData(Qt::AccessibleDescriptionRole, cause);
  }

  BatchDialog& dialog_;
  BatchJob& job_;
  std::vector<std::pair<BatchOption, QCheckBox*>> options_;
  QLineEdit* folder_ = nullptr;
  QLineEdit* mask_ = nullptr;
  FileList* list_ = nullptr;
  QLabel* count_ = nullptr;
  QLabel* fault_ = nullptr;
  QSlider* level_ = nullptr;
  QLabel* level_text_ = nullptr;
  QLineEdit* join_name_ = nullptr;
  QLineEdit* limit_ = nullptr;
  QLineEdit* cut_begin_ = nullptr;
  QLineEdit* cut_end_ = nullptr;
  QLineEdit* fade_begin_ = nullptr;
  QLineEdit* fade_end_ = nullptr;
  QSpinBox* bottom_ = nullptr;
  QRadioButton* to_folder_ = nullptr;
  QRadioButton* overwrite_ = nullptr;
  QListWidget* results_ = nullptr;
  QPushButton* start_ = nullptr;
  QPushButton* stop_ = nullptr;
  bool is_stepping_ = false;
  bool closes_ = false;
};

}  // namespace

bool show_window(BatchDialog& dialog, QWidget* parent) {
  BatchWindow(dialog, parent).exec();
  dialog.cancel();
  return true;
}

}  // namespace corvelin
