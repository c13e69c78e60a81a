// SPDX-License-Identifier: GPL-2.0-or-later
// What screen readers are told of a menu entry with a check or radio mark. To the toolkit it is an
// entry like all others, so that nobody hears of a mark that is not set.
#pragma once

#include <QAccessibleInterface>

class QAction;

namespace corvelin {

QAccessibleInterface* new_accessible_mark(QAction& entry);

/// The mark has been set or taken away.
void announce_mark(QAction& entry);

}  // namespace corvelin
