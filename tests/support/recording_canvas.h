// A canvas that writes down what is drawn, a row for each call: "solid LEFT,TOP,RIGHT,BOTTOM
// COLOUR", "text X,Y 'TEXT' HEIGHT COLOUR". Colours go by what the settings use them for. Each
// letter of a text is half as wide as high.
#pragma once

#include <fmt/format.h>

#include <string>
#include <vector>

#include "settings/settings.h"
#include "shell/canvas.h"

namespace corvelin::test {

class RecordingCanvas : public Canvas {
 public:
  std::vector<std::string> rows;

  void fill(const Rect& area, Colour colour, Pattern pattern = Pattern::solid) override {
    constexpr const char* patterns[] = {"solid", "dots", "hatch"};
    if (!area.is_empty())
      rows.push_back(fmt::format("{} {} {}", patterns[static_cast<int>(pattern)], place(area),
                                 name_of(colour)));
  }
  int text(int x, int y, std::string_view text, const TextStyle& style) override {
    constexpr const char* alignments[] = {"text", "centred", "right"};
    rows.push_back(fmt::format("{} {},{} '{}' {}{} {}{}", alignments[static_cast<int>(style.align)],
                               x, y, text, style.height, style.is_bold ? " bold" : "",
                               name_of(style.colour),
                               style.ground ? " on " + name_of(*style.ground) : ""));
    return static_cast<int>(text.size()) * style.height / 2;
  }
  void paragraph(const Rect& box, std::string_view text, const TextStyle& style) override {
    rows.push_back(fmt::format("paragraph {} '{}' {} {}", place(box), text, style.height,
                               name_of(style.colour)));
  }

  /// The rows that begin so, one below the other.
  [[nodiscard]] std::string drawn(std::string_view beginning) const {
    std::string text;
    for (const std::string& row : rows)
      if (row.starts_with(beginning)) text += row + "\n";
    return text;
  }

 private:
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
};

}  // namespace corvelin::test
