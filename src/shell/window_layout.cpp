// The grid of the window.
#include "shell/window_layout.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>

#include "settings/settings.h"
#include "shell/panel_buttons.h"

namespace corvelin {

namespace {

constexpr CommandId separator = 0;

constexpr CommandId toolbar_ids[] = {
    1010, 1012, 1016, separator, 1031, 1032, 1033, 1022,      1050, separator, 1027,
    213,  212,  1028, separator, 1024, 1034, 1023, separator, 1036, 1037,      1038,
    1039, 1040, 1041, separator, 205,  206,  207,  208,       209,  210};
constexpr CommandId navigation_ids[] = {113, 114, 112, 115,       separator, 118, 119, 116,
                                        117, 133, 122, separator, 120,       121, 163};
constexpr CommandId editing_ids[] = {152, 153, 154, 155,       separator, 1045, 131, 126,
                                     127, 128, 129, separator, 134,       135,  137};
constexpr CommandId text_navigation_ids[] = {112, 113, 114, 115,       separator, 133, 116,
                                             117, 118, 119, separator, 120,       121};
constexpr CommandId text_editing_ids[] = {152, 153, 154,       155, separator, 131, 126,       127,
                                          128, 129, separator, 134, 135,       137, separator, 138};

// A control on its way to a place in a row.
struct Item {
  CommandId id = 0;      // of a button, or `separator`
  Rect* area = nullptr;  // of any other control
  int width = 0;         // at least
  int height = 0;
  bool stretches = false;  // takes a share of what is left of its row
};

// Puts items into rows from left to right, as many into each as fit.
class Flow {
 public:
  Flow(const Rect& space, int gap, std::vector<PlacedButton>& buttons)
      : space_(space), gap_(gap), buttons_(buttons), bottom_(space.top) {}

  void add(const Item& item) {
    const bool is_separator = item.area == nullptr && item.id == separator;
    if (row_width_ + item.width > space_.width() && !row_.empty()) {
      end_row();
      if (is_separator) return;
    }
    row_.push_back(item);
    row_width_ += item.width + (item.area != nullptr ? gap_ : 0);
  }

  void end_row() {
    if (row_.empty()) return;
    int height = 0;
    int stretching = 0;
    for (const Item& item : row_) {
      height = std::max(height, item.height);
      stretching += item.stretches ? 1 : 0;
    }
    const int spare = std::max(space_.width() - row_width_ + trailing_gap(), 0);
    if (bottom_ > space_.top) bottom_ += gap_;
    int x = space_.left;
    for (const Item& item : row_) {
      const int width = item.width + (item.stretches ? spare / stretching : 0);
      place(item, x, width, bottom_ + (height - item.height) / 2);
      x += width + (item.area != nullptr ? gap_ : 0);
    }
    bottom_ += height;
    row_.clear();
    row_width_ = 0;
  }

  [[nodiscard]] int bottom() const { return bottom_; }

 private:
  [[nodiscard]] int trailing_gap() const { return row_.back().area != nullptr ? gap_ : 0; }

  void place(const Item& item, int x, int width, int y) {
    const Rect area = {x, y, x + width, y + item.height};
    if (item.area != nullptr) {
      *item.area = area;
    } else if (item.id != separator) {
      buttons_.push_back({item.id, area});
    }
  }

  Rect space_;
  int gap_;
  std::vector<PlacedButton>& buttons_;
  std::vector<Item> row_;
  int row_width_ = 0;
  int bottom_;
};

class Layouter {
 public:
  explicit Layouter(const WindowSpace& space) : space_(space), symbol_(symbol_size(scale())) {}

  WindowLayout lay_out() {
    const int view_top = lay_out_toolbar();
    const int panel_h = lay_out_panel();
    const int info_h = scaled(26);
    const int info_gap = scaled(6);
    const int bar_h = scaled(16);
    const int width = space_.width;
    const int panel_top = space_.height - panel_h - info_h;
    const int outside = settings.scrollbar_arrows != 0 ? 0 : space_.arrow_width;
    const auto bar_top = static_cast<int>(static_cast<float>(panel_top) - 20 * scale());

    layout_.toolbar = {0, 0, width, view_top};
    layout_.view = {0, view_top + 2, width, panel_top - bar_h - 6};
    layout_.view.bottom = std::max(layout_.view.bottom, layout_.view.top);
    layout_.scroll_bar = {-outside, bar_top, width + outside, bar_top + bar_h};
    layout_.panel = {0, panel_top, width, panel_top + panel_h};
    layout_.info_bar = {0, panel_top + panel_h + info_gap, width, panel_top + panel_h + info_h};
    move_panel_to(panel_top);
    return layout_;
  }

 private:
  [[nodiscard]] float scale() const { return space_.display_scale; }
  [[nodiscard]] int scaled(int logical) const {
    return static_cast<int>(static_cast<float>(logical) * scale());
  }
  [[nodiscard]] int gap() const { return scaled(8); }
  [[nodiscard]] Rect inner(int left, int right) const {
    return {left + gap(), gap() / 2, std::max(right - gap(), left + gap()), 0};
  }

  int lay_out_toolbar() {
    Flow flow(inner(0, space_.width), 0, layout_.toolbar_buttons);
    add_symbols(flow, toolbar_ids);
    flow.end_row();
    return flow.bottom() + gap() / 2;
  }

  void add_symbols(Flow& flow, std::span<const CommandId> ids) const {
    for (const CommandId id : ids)
      flow.add({.id = id,
                .width = id == separator ? gap() : symbol_.button_w,
                .height = symbol_.button_h});
  }

  void add_words(Flow& flow, std::span<const CommandId> ids) {
    for (const CommandId id : ids) {
      const int width = id == separator ? gap() : word_width(id);
      if (id == 138) {
        flow.add({.area = &layout_.margin, .width = width, .height = word_height()});
      } else {
        flow.add({.id = id, .width = width, .height = word_height()});
      }
    }
  }

  [[nodiscard]] int word_height() const {
    return scaled(panel_form() == PanelForm::text_extra_slim ? 22 : 26);
  }
  // Wide enough for either of a button's labels.
  [[nodiscard]] int word_width(CommandId id) const {
    int width = 0;
    for (const bool is_fast : {false, true}) {
      std::string label(panel_label(id, is_fast));
      std::erase(label, '&');
      width = std::max(width, text_width(label));
    }
    return std::max(width + 2 * gap(), scaled(34));
  }
  [[nodiscard]] int text_width(std::string_view text) const {
    return space_.text_width ? space_.text_width(text) : static_cast<int>(text.size()) * scaled(7);
  }

  [[nodiscard]] Item field(Rect& area) const {
    return {.area = &area, .width = scaled(200), .height = scaled(24), .stretches = true};
  }
  [[nodiscard]] Item margin() {
    return {.area = &layout_.margin,
            .width = text_width(" 00.0  /  00.0") + gap(),
            .height = scaled(24)};
  }
  [[nodiscard]] Item lying_slider() {
    return {.area = &layout_.volume_slider, .width = scaled(120), .height = scaled(24)};
  }

  // The panel's controls are placed from its own top on; the result is its height.
  int lay_out_panel() {
    const PanelForm form = panel_form();
    const int bottom = has_text_buttons(form) ? lay_out_words(form) : lay_out_symbols(form);
    return bottom + gap() / 2;
  }

  int lay_out_symbols(PanelForm form) {
    Flow flow(inner(0, space_.width), gap(), layout_.panel_buttons);
    const auto add_fields = [&] {
      for (const Item& item :
           {field(layout_.position_field), field(layout_.range_field), margin(), lying_slider()})
        flow.add(item);
      flow.end_row();
    };
    if (form == PanelForm::symbols_2) {
      add_symbols(flow, navigation_ids);
      flow.add({.id = separator, .width = gap(), .height = 0});
      flow.add(field(layout_.position_field));
      flow.add(margin());
      flow.end_row();
      add_symbols(flow, editing_ids);
      flow.add({.id = separator, .width = gap(), .height = 0});
      flow.add(field(layout_.range_field));
      flow.add(lying_slider());
      flow.end_row();
      return flow.bottom();
    }
    if (form == PanelForm::symbols_1) add_fields();
    add_symbols(flow, navigation_ids);
    flow.add({.id = separator, .width = gap(), .height = 0});
    add_symbols(flow, editing_ids);
    flow.end_row();
    if (form == PanelForm::classic_symbols) add_fields();
    return flow.bottom();
  }

  int lay_out_words(PanelForm form) {
    const int slider_w = scaled(28);
    const int right = std::max(space_.width - slider_w - gap(), 0);
    int left = 0;
    int bottom = 0;
    if (form == PanelForm::text_navigation_left) {
      left = std::min(scaled(320), right / 2);
      Flow navigation(inner(0, left), gap() / 2, layout_.panel_buttons);
      add_words(navigation, text_navigation_ids);
      navigation.end_row();
      bottom = navigation.bottom();
    }
    Flow flow(inner(left, right), gap() / 2, layout_.panel_buttons);
    flow.add(field(layout_.position_field));
    flow.add(field(layout_.range_field));
    flow.end_row();
    if (form != PanelForm::text_navigation_left) {
      add_words(flow, text_navigation_ids);
      if (form == PanelForm::text) flow.end_row();
    }
    add_words(flow, text_editing_ids);
    flow.end_row();
    bottom = std::max(bottom, flow.bottom());
    layout_.volume_slider = {right, gap() / 2, right + slider_w, bottom};
    return bottom;
  }

  void move_panel_to(int top) {
    const auto move = [top](Rect& area) {
      area.top += top;
      area.bottom += top;
    };
    for (PlacedButton& button : layout_.panel_buttons) move(button.area);
    for (Rect* const area :
         {&layout_.position_field, &layout_.range_field, &layout_.volume_slider, &layout_.margin})
      move(*area);
  }

  const WindowSpace& space_;
  SymbolSize symbol_;
  WindowLayout layout_;
};

}  // namespace

PanelForm panel_form() {
  switch (settings.layout) {
    case 0:
    case 3:
      return PanelForm::classic_symbols;
    case 4:
    case 5:
      return PanelForm::symbols_2;
    case 16:
      return PanelForm::text;
    case 17:
      return PanelForm::text_navigation_left;
    case 18:
      return PanelForm::text_extra_slim;
    default:
      return PanelForm::symbols_1;
  }
}

bool has_text_buttons(PanelForm form) { return form >= PanelForm::text; }

bool has_bright_symbols() {
  return settings.layout == 1 || settings.layout == 4 || settings.darkmode != 0;
}

SymbolSize symbol_size(float display_scale) {
  const float scale = display_scale;
  const bool is_large = settings.large_symbols != 0 && settings.layout != 3;
  SymbolSize size = {.picture_w = is_large ? 40 : 20, .picture_h = is_large ? 32 : 16};
  const auto padding = [&](int picture, int large) {
    if (settings.large_symbols != 0) return static_cast<int>(static_cast<float>(large) * scale);
    const int ten = static_cast<int>(scale * 10);
    return static_cast<int>(scale * static_cast<float>(picture)) + ten - picture;
  };
  constexpr int least_padding = 6;
  const bool is_padded = settings.no_padding == 0;
  size.button_w = size.picture_w + (is_padded ? padding(size.picture_w, 7) : least_padding);
  size.button_h = size.picture_h + (is_padded ? padding(size.picture_h, 5) : least_padding);
  return size;
}

WindowLayout window_layout(const WindowSpace& space) { return Layouter(space).lay_out(); }

}  // namespace corvelin
