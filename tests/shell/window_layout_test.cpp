// SPDX-License-Identifier: GPL-2.0-or-later
// The grid of the window in its forms.
#include "shell/window_layout.h"

#include <climits>
#include <set>

#include "settings/settings.h"
#include "shell/panel_buttons.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class WindowLayoutTest : public CoreTest {};

WindowLayout layout_at(int width, int height, float scale = 1) {
  return window_layout({.width = width,
                        .height = height,
                        .display_scale = scale,
                        .arrow_width = 17,
                        .text_width = [scale](std::string_view text) {
                          return static_cast<int>(static_cast<float>(text.size()) * 7 * scale);
                        }});
}

TEST_F(WindowLayoutTest, PartsFollowEachOtherFromTopToBottom) {
  settings.large_symbols = 0;
  WindowLayout layout = layout_at(1150, 500);
  EXPECT_EQ(layout.toolbar, (Rect{0, 0, 1150, 34}));  // buttons of 26 in a margin of 4
  const int panel_h = layout.panel.height();
  EXPECT_EQ(layout.view, (Rect{0, 36, 1150, 500 - panel_h - 26 - 16 - 6}));
  EXPECT_EQ(layout.scroll_bar, (Rect{-17, 500 - panel_h - 46, 1167, 500 - panel_h - 30}));
  EXPECT_EQ(layout.panel, (Rect{0, 500 - panel_h - 26, 1150, 474}));
  EXPECT_EQ(layout.info_bar, (Rect{0, 480, 1150, 500}));
  settings.scrollbar_arrows = 1;
  EXPECT_EQ(layout_at(1150, 500).scroll_bar.left, 0);

  layout = layout_at(1150, 500, 1.25F);
  EXPECT_EQ(layout.info_bar, (Rect{0, 475, 1150, 500}));  // 32 less 7
  EXPECT_EQ(layout.scroll_bar.height(), 20);
}

TEST_F(WindowLayoutTest, TheWindowIsBroughtOntoTheDesktop) {
  struct {
    int x, y, w, h;
    Rect expected;
  } const rows[] = {{-20, -6, 1150, 560, {-20, -6, 1130, 554}},
                    {-21, -7, 1150, 560, {0, 0, 1150, 560}},
                    {1400, 800, 1150, 560, {1400, 800, 2550, 1360}},
                    {1401, 801, 1150, 560, {1400, 800, 2550, 1360}},
                    {50, 50, 65535, 99'999'999, {0, 0, 1600, 1000}},
                    {INT_MIN, INT_MAX, 0, INT_MIN, {0, 800, 100, 900}}};
  for (const auto& row : rows) {
    settings.window_x = row.x;
    settings.window_y = row.y;
    settings.window_w = row.w;
    settings.window_h = row.h;
    move_window_onto({0, 0, 1600, 1000});
    EXPECT_EQ((Rect{settings.window_x, settings.window_y, settings.window_x + settings.window_w,
                    settings.window_y + settings.window_h}),
              row.expected);
  }
}

TEST_F(WindowLayoutTest, ButtonsGrowBySymbolsAndPadding) {
  struct {
    std::uint16_t layout;
    std::uint32_t large;
    std::uint32_t no_padding;
    float scale;
    int sizes[4];
  } const rows[] = {{1, 0, 0, 1, {20, 16, 30, 26}},     {1, 1, 0, 1, {40, 32, 47, 37}},
                    {3, 1, 0, 1, {20, 16, 27, 21}},     {1, 0, 0, 1.5F, {30, 24, 45, 39}},
                    {1, 1, 0, 1.25F, {40, 32, 48, 38}}, {1, 0, 1, 1, {20, 16, 26, 22}}};
  for (const auto& row : rows) {
    settings.layout = row.layout;
    settings.large_symbols = row.large;
    settings.no_padding = row.no_padding;
    const SymbolSize size = symbol_size(row.scale);
    EXPECT_EQ(size.picture_w, row.sizes[0]);
    EXPECT_EQ(size.picture_h, row.sizes[1]);
    EXPECT_EQ(size.button_w, row.sizes[2]) << row.layout << row.large << row.no_padding;
    EXPECT_EQ(size.button_h, row.sizes[3]) << row.layout << row.large << row.no_padding;
  }
}

// Whether the places lie in an area and apart from each other.
void expect_apart(const std::vector<Rect>& places, const Rect& area) {
  for (std::size_t i = 0; i < places.size(); ++i) {
    const Rect& place = places[i];
    EXPECT_TRUE(!place.is_empty() && place.left >= area.left && place.right <= area.right &&
                place.top >= area.top && place.bottom <= area.bottom)
        << i << ": " << place.left << "," << place.top << " " << place.right << "," << place.bottom;
    for (std::size_t k = 0; k < i; ++k) {
      const Rect& other = places[k];
      EXPECT_TRUE(place.left >= other.right || other.left >= place.right ||
                  place.top >= other.bottom || other.top >= place.bottom)
          << i << " and " << k;
    }
  }
}

TEST_F(WindowLayoutTest, EveryFormHasItsControlsApartFromEachOther) {
  constexpr std::uint16_t forms[] = {0, 1, 2, 3, 4, 5, 16, 17, 18, 99};
  for (const std::uint16_t form : forms) {
    for (const std::uint32_t large : {0U, 1U}) {
      for (const float scale : {1.0F, 1.25F, 2.0F}) {
        SCOPED_TRACE(std::to_string(form) + " " + std::to_string(large) + " " +
                     std::to_string(scale));
        settings.layout = form;
        settings.large_symbols = large;
        const WindowLayout layout =
            layout_at(static_cast<int>(1150 * scale), static_cast<int>(600 * scale), scale);
        std::vector<Rect> places;
        std::set<CommandId> ids;
        for (const PlacedButton& button : layout.toolbar_buttons) places.push_back(button.area);
        expect_apart(places, layout.toolbar);
        EXPECT_EQ(places.size(), 27U);
        places = {layout.position_field, layout.range_field, layout.volume_slider, layout.margin};
        for (const PlacedButton& button : layout.panel_buttons) {
          places.push_back(button.area);
          ids.insert(button.id);
          EXPECT_TRUE(!has_text_buttons(panel_form()) || !panel_label(button.id, false).empty());
        }
        expect_apart(places, layout.panel);
        EXPECT_EQ(ids.size(), form >= 16 && form <= 18 ? 23U : 26U);
        EXPECT_EQ(ids.size(), layout.panel_buttons.size());
      }
    }
  }
  settings.large_symbols = 0;
  settings.layout = 4;  // narrow, the margin has no row of its own, where it is mostly empty
  const WindowLayout narrow = layout_at(740, 560);
  EXPECT_GE(narrow.volume_slider.top, narrow.range_field.bottom);
  EXPECT_EQ(narrow.margin.top, narrow.volume_slider.top);
  for (const int width : {1, 200, 8000}) {
    const WindowLayout layout = layout_at(width, 1);
    EXPECT_GE(layout.view.bottom, layout.view.top);
  }
}

}  // namespace
}  // namespace corvelin::test
