// SPDX-License-Identifier: GPL-2.0-or-later
// What the view is drawn on. The view's rules know rectangles of pixels and text, nothing else: a
// line is a rectangle one pixel wide. Coordinates are device pixels from the view's top left
// corner; what lies outside the view is not drawn.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace corvelin {

/// A colour as the settings hold it: red in the lowest byte, then green and blue (0x00BBGGRR).
using Colour = std::uint32_t;

/// The pixels from `left` and `top` to in front of `right` and `bottom`.
struct Rect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  [[nodiscard]] int width() const { return right - left; }
  [[nodiscard]] int height() const { return bottom - top; }
  [[nodiscard]] bool is_empty() const { return right <= left || bottom <= top; }
  [[nodiscard]] bool contains(int x, int y) const {
    return x >= left && x < right && y >= top && y < bottom;
  }
  bool operator==(const Rect&) const = default;
};

/// Which pixels of a rectangle take the colour. Between them stays what was there. The patterns are
/// fixed to the view, so that they stand still when the rectangle moves.
enum class Pattern {
  solid,
  dots,   // every second row, beginning with row 0 of the view: a dotted upright line
  hatch,  // diagonals: where x + y is a multiple of `hatch_pitch`
};

constexpr int hatch_pitch = 4;  // pixels

enum class TextAlign { left, centre, right };

struct TextStyle {
  int height = 0;  // of a line from the top of its ascenders to the bottom of its descenders
  Colour colour = 0;
  bool is_bold = false;
  TextAlign align = TextAlign::left;  // what stands at x
  std::optional<Colour> ground = {};  // fills the text's own rectangle first
};

class Canvas {
 public:
  Canvas() = default;
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  virtual ~Canvas() = default;

  /// Nothing for an empty rectangle.
  virtual void fill(const Rect& area, Colour colour, Pattern pattern = Pattern::solid) = 0;

  /// One line of UTF-8 text, its top at `y`. Returns the width that it takes.
  virtual int text(int x, int y, std::string_view text, const TextStyle& style) = 0;

  /// Text broken at word ends to the width of `box`, from its top down. What doesn't fit runs over
  /// the box.
  virtual void paragraph(const Rect& box, std::string_view text, const TextStyle& style) = 0;

 protected:
  Canvas(Canvas&&) = default;
  Canvas& operator=(Canvas&&) = default;
};

/// The border of a rectangle, one pixel wide and inside of it.
void outline(Canvas& canvas, const Rect& area, Colour colour);

}  // namespace corvelin
