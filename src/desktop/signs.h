// SPDX-License-Identifier: GPL-2.0-or-later
// The coloured pictures: the program's own, and what boxes are about.
#pragma once

#include <QIcon>

namespace corvelin {

/// The program's own picture.
QIcon program_icon();

/// What a box is about.
enum class BoxPicture { information, warning, error, question };
QIcon box_icon(BoxPicture picture);

}  // namespace corvelin
