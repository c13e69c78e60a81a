// SPDX-License-Identifier: GPL-2.0-or-later
// What screen readers are told of a line that can be read, marked and copied, and not be changed.
// The toolkit tells of such a line that it can be edited.
#pragma once

#include <QAccessibleInterface>

class QLineEdit;

namespace corvelin {

QAccessibleInterface* new_accessible_read_only_line(QLineEdit& line);

}  // namespace corvelin
