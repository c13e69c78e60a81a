// SPDX-License-Identifier: GPL-2.0-or-later
// Text on its way between the core, which holds UTF-8 and UTF-16, and Qt.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace corvelin {

inline QString as_qstring(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

inline QString as_qstring(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string as_utf8(const QString& text) { return text.toStdString(); }

}  // namespace corvelin
