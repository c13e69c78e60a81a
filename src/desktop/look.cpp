// SPDX-License-Identifier: GPL-2.0-or-later
// Colours out of the settings, and legible ones where these leave none.
#include "desktop/look.h"

#include <algorithm>
#include <cmath>

#include "settings/settings.h"
#include "shell/window_layout.h"

namespace corvelin {

namespace {

// Relative luminance and contrast as WCAG 2 defines them.
double luminance(const QColor& colour) {
  const auto linear = [](double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

double contrast(const QColor& a, const QColor& b) {
  const double one = luminance(a) + 0.05;
  const double other = luminance(b) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

bool is_dark_colour(const QColor& colour) { return luminance(colour) < 0.18; }

// The settings of layout and ground are free, and one of the two colours can be read on any.
QColor legible(const QColor& wanted, const QColor& other, const QColor& ground) {
  constexpr double enough = 4.5;  // for texts, as WCAG 2 has it
  const double reached = contrast(wanted, ground);
  return reached >= enough || reached >= contrast(other, ground) ? wanted : other;
}

constexpr QColor dark_accent(0x00, 0x79, 0xA2);
constexpr QColor bright_accent(0x5C, 0xC3, 0xEA);

}  // namespace

QColor mixed(const QColor& under, const QColor& over, double share) {
  const auto mix = [share](int a, int b) {
    return static_cast<int>(std::lround(a + (b - a) * share));
  };
  return {mix(under.red(), over.red()), mix(under.green(), over.green()),
          mix(under.blue(), over.blue())};
}

QColor from_setting(std::uint32_t colour) {
  return {static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
          static_cast<int>(colour >> 16 & 0xFF)};
}

Look look_of_settings() {
  const QColor bright_ink(249, 249, 249);
  const QColor dark_ink(63, 63, 63);
  const QColor bright_text(0xE0, 0xE0, 0xE0);
  const QColor dark_text(Qt::black);
  const bool is_bright = has_bright_symbols();
  const QColor ground = from_setting(settings.rgb_win);
  const bool is_dark_ground = is_dark_colour(ground);
  return {.is_dark = settings.darkmode != 0 || is_dark_ground,
          .ground = ground,
          .ink = is_bright ? legible(bright_ink, dark_ink, ground)
                           : legible(dark_ink, bright_ink, ground),
          .text = is_bright ? legible(bright_text, dark_text, ground)
                            : legible(dark_text, bright_text, ground),
          .accent = is_dark_ground ? bright_accent : dark_accent};
}

QPalette palette_on(const QColor& ground, const QColor& text) {
  const bool is_dark = is_dark_colour(ground);
  const QColor white = Qt::white;
  const QColor grey = mixed(text, ground, 0.5);
  QPalette palette;
  palette.setColor(QPalette::Window, ground);
  palette.setColor(QPalette::Base, is_dark ? mixed(ground, white, 0.06) : white);
  palette.setColor(QPalette::AlternateBase, mixed(ground, text, 0.04));
  palette.setColor(QPalette::Button, is_dark ? mixed(ground, white, 0.12) : white);
  palette.setColor(QPalette::ToolTipBase, is_dark ? mixed(ground, white, 0.14) : white);
  palette.setColor(QPalette::Light, mixed(ground, white, is_dark ? 0.2 : 0.9));
  palette.setColor(QPalette::Midlight, mixed(ground, text, 0.1));
  palette.setColor(QPalette::Mid, mixed(ground, text, 0.28));
  palette.setColor(QPalette::Dark, mixed(ground, Qt::black, 0.4));
  palette.setColor(QPalette::Shadow, mixed(ground, Qt::black, 0.7));
  palette.setColor(QPalette::Highlight, dark_accent);
  palette.setColor(QPalette::HighlightedText, white);
  palette.setColor(QPalette::Link, is_dark ? bright_accent : dark_accent);
  palette.setColor(QPalette::PlaceholderText, grey);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                         QPalette::ToolTipText, QPalette::BrightText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, grey);
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, ground);  // an empty field has no grey text
  palette.setColor(QPalette::Disabled, QPalette::Highlight, mixed(ground, text, 0.2));
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, grey);
  return palette;
}

QPalette dialog_palette(const Look& look) {
  const bool fits = is_dark_colour(look.ground) == look.is_dark;
  if (look.is_dark) return palette_on(fits ? look.ground : QColor(0x202020), QColor(0xE6E6E6));
  return palette_on(look.ground, QColor(0x1C1C1C));
}

QPalette window_palette(const Look& look) { return palette_on(look.ground, look.text); }

QPalette menu_palette(const Look& look) {
  if (settings.darkmode == 0) return dialog_palette(look);
  QPalette palette = palette_on(look.ground, legible(Qt::white, Qt::black, look.ground));
  palette.setColor(QPalette::Highlight, from_setting(settings.rgb_cuts));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

}  // namespace corvelin
