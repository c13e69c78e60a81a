// SPDX-License-Identifier: GPL-2.0-or-later
// From the table's keys to Qt's.
#include "desktop/keys.h"

#include <QShortcut>
#include <QWidget>
#include <algorithm>
#include <iterator>

#include "desktop/qt_text.h"
#include "edit/commands.h"

namespace corvelin {

namespace {

// X11 hands on the keypad's signs without telling that they are the keypad's, so those of the other
// keys do the same: a keyboard may have no keypad.
QKeySequence key_sequence(std::string_view key) {
  constexpr struct {
    std::string_view key;
    QKeyCombination keys;
  } other_names[] = {
      {"Page Up", Qt::Key_PageUp}, {"Page Down", Qt::Key_PageDown}, {"Num +", Qt::Key_Plus},
      {"Num -", Qt::Key_Minus},    {"Num *", Qt::Key_Asterisk},
  };
  for (const auto& row : other_names)
    if (row.key == key) return QKeySequence(row.keys);
  return QKeySequence(as_qstring(key), QKeySequence::PortableText);
}

}  // namespace

std::vector<QKeySequence> key_sequences(std::string_view keys) {
  std::vector<QKeySequence> sequences;
  while (!keys.empty()) {
    const std::size_t end = std::min(keys.find(", "), keys.size());
    sequences.push_back(key_sequence(keys.substr(0, end)));
    keys.remove_prefix(std::min(end + 2, keys.size()));
  }
  return sequences;
}

// The keys belong to the window and not to the menu entries: the toolkit gives no key to an entry
// that is grey, but here the command runs, and its checks tell why it can't be done.
void make_shortcuts(QWidget* window, const RunCommand& run) {
  for (const Command& command : command_table()) {
    for (const QKeySequence& keys : key_sequences(command.keys)) {
      auto* const shortcut = new QShortcut(keys, window);
      shortcut->setAutoRepeat(command.has(rule::repeats));
      const CommandId id = command.id;
      QObject::connect(shortcut, &QShortcut::activated, window, [run, id] { run(id); });
    }
  }
}

}  // namespace corvelin
