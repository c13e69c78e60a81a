// SPDX-License-Identifier: GPL-2.0-or-later
// A canvas that writes down what is drawn: a rectangle as LEFT,TOP,RIGHT,BOTTOM, with ":" in front
// when it is dotted and "#" when it is hatched, a text as X,Y'TEXT'HEIGHT. Colours go by what the
// settings use them for. A letter of a text is half as wide as high.
#pragma once

#include <fmt/format.h>

#include <string>
#include <utility>
#include <vector>

#include "settings/settings.h"
#include "shell/canvas.h"

namespace corvelin::test {

class RecordingCanvas : public Canvas {
 public:
  void fill(const Rect& area, Colour colour, Pattern pattern = Pattern::solid) override {
    constexpr const char* marks[] = {"", ":", "#"};
    if (!area.is_empty())
      add(false, colour, area.top, marks[static_cast<int>(pattern)] + place(area));
  }
  int text(int x, int y, std::string_view text, const TextStyle& style) override {
    constexpr const char* alignments[] = {"", "|", ">"};
    add(true, style.colour, y,
        fmt::format("{}{},{}'{}'{}{}{}", alignments[static_cast<int>(style.align)], x, y, text,
                    style.height, style.is_bold ? " bold" : "",
                    style.ground ? " on " + name_of(*style.ground) : ""));
    return static_cast<int>(text.size()) * style.height / 2;
  }
  void paragraph(const Rect& box, std::string_view text, const TextStyle& style) override {
    add(true, style.colour, box.top, fmt::format("{}'{}'{}", place(box), text, style.height));
  }

  /// The rectangles of a colour that begin in these rows of pixels, in the order of drawing.
  [[nodiscard]] std::string drawn(std::string_view colour, int top, int bottom) const {
    return in_order(false, colour, top, bottom);
  }
  /// The texts.
  [[nodiscard]] std::string written(std::string_view colour, int top = -100,
                                    int bottom = 10'000) const {
    return in_order(true, colour, top, bottom);
  }

 private:
  struct Call {
    bool is_text;
    std::string colour;
    int top;
    std::string text;
  };

  [[nodiscard]] std::string in_order(bool is_text, std::string_view colour, int top,
                                     int bottom) const {
    std::string text;
    for (const Call& call : calls_)
      if (call.is_text == is_text && call.colour == colour && call.top >= top && call.top < bottom)
        text += (text.empty() ? "" : " ") + call.text;
    return text;
  }

  void add(bool is_text, Colour colour, int top, std::string text) {
    calls_.push_back({is_text, name_of(colour), top, std::move(text)});
  }
  static std::string place(const Rect& area) {
    return fmt::format("{},{},{},{}", area.left, area.top, area.right, area.bottom);
  }
  static std::string name_of(Colour colour) {
    const std::pair<std::uint32_t, const char*> names[] = {{settings.rgb_background, "background"},
                                                           {settings.rgb_mpeg, "mpeg"},
                                                           {settings.rgb_cuts, "cuts"},
                                                           {settings.rgb_cursor, "cursor"},
                                                           {settings.rgb_vumeter, "vumeter"},
                                                           {settings.rgb_selection, "selection"},
                                                           {settings.rgb_actual, "actual"},
                                                           {0x808080, "grip"}};
    for (const auto& [value, name] : names)
      if (value == colour) return name;
    return fmt::format("{:06X}", colour);
  }

  std::vector<Call> calls_;
};

}  // namespace corvelin::test
