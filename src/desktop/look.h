// SPDX-License-Identifier: GPL-2.0-or-later
// The look of the program as the settings choose it: dark or bright, the same on every desktop.
// Owns the colours of everything but the view, which draws by the settings itself.
#pragma once

#include <QColor>
#include <QPalette>
#include <cstdint>

#include "desktop/icons.h"

namespace corvelin {

struct Look {
  bool is_dark = true;  // menus and dialogs
  QColor ground;        // of the window round the view
  QColor ink;           // of the symbols on it
  QColor text;          // on it
  QColor accent;        // what has the focus, is selected or is switched on

  [[nodiscard]] IconColours icon_colours() const { return {ink, accent}; }
  bool operator==(const Look&) const = default;
};

/// A colour as the settings hold it.
QColor from_setting(std::uint32_t colour);

Look look_of_settings();

/// The palettes of what stands on a ground, of dialogs, of the main window and of its menus. The
/// role `Link` is the accent, `Mid` the colour of borders.
QPalette palette_on(const QColor& ground, const QColor& text);
QPalette dialog_palette(const Look& look);
QPalette window_palette(const Look& look);
QPalette menu_palette(const Look& look);

/// A mixture with `share` (0 to 1) of `over`.
QColor mixed(const QColor& under, const QColor& over, double share);

}  // namespace corvelin
