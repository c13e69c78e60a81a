// SPDX-License-Identifier: GPL-2.0-or-later
// The sections of the page.
#include "cli/manual_page.h"

#include <fmt/format.h>

#include "cli/edit_lines.h"
#include "cli/listings.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/place.h"
#include "edit/command_help.h"
#include "edit/commands.h"
#include "settings/setting_table.h"
#include "text/man_page.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

void add_options(ManPage& page) {
  page.section("OPTIONS");
  std::string group = "Options";
  for (const OptionRow& row : option_rows()) {
    if (row.group != group) page.paragraph(row.group + ":");
    group = row.group;
    page.entry(row.names, row.help);
  }
}

void add_lines(ManPage& page) {
  page.section("EDIT LINES");
  page.paragraph(
      "Words are parted by blanks; a text with blanks stands in double quotes, with \\\" and \\\\ "
      "inside. # begins a comment. POS is a place, see below.");
  for (const auto& table : line_tables())
    for (const EditLine& line : table)
      page.entry(fmt::format("{} {}", line.name, line.arguments), line.help);

  page.section("PLACES");
  page.paragraph("A place in the edited stream has one of these forms:");
  page.example(place_forms);
  page.paragraph(
      "A cut falls on the first frame at or behind its time. All places of a line mean the stream "
      "as it is in front of the line.");

  page.section("COMMANDS");
  page.paragraph("The commands of the window are edit lines too, by name or number:");
  for (const Command& command : command_table()) {
    const std::string_view help = command_help(command.name);
    if (!help.empty()) page.entry(fmt::format("{} ({})", command.name, command.id), help);
  }
}

// The defaults are those in front of a first start, which fills in the folders of its user.
void add_settings(ManPage& page) {
  page.section("SETTINGS");
  page.paragraph("For --set and the line set, each with its default:");
  const Settings defaults = default_settings();
  for (const SettingKey& row : setting_keys()) {
    const auto standard = get_setting(row.key, defaults);
    if (!standard) continue;  // several lines, which no single value sets
    page.entry(fmt::format("{}={}", row.key, *standard),
               fmt::format("{} ({})", row.meaning, allowed_text(row)));
  }
}

}  // namespace

void print_manual_page() {
  ManPage page("corvelin-cli", "edit and record compressed audio without a window",
               "[OPTIONS] [FILE...] [SWITCHES]");
  page.section("DESCRIPTION");
  page.paragraph(
      "Opens MP3, MP2 and AAC files, runs edit lines on them, and saves. Frames are copied, never "
      "encoded anew, so an edit costs no quality. It needs neither a display nor a sound card.");
  page.paragraph(
      "The first line that is refused ends the run, and nothing is saved then. A file that exists "
      "is replaced only with --yes, the source only with that or by --overwrite.");
  add_options(page);
  add_lines(page);
  add_settings(page);
  page.section("NAMES OF TRACKS");
  page.paragraph("The setting split_pattern makes them of these:");
  page.example(fmt::format("{}\n", ui_text(row::split_variables)));
  page.section("EXIT STATUS");
  page.paragraph(exit_statuses);
  page.section("EXAMPLES");
  page.example(example_lines);
  page.section("SEE ALSO");
  page.paragraph("corvelin(1), ffmpeg(1)");
  print(page.text());
}

}  // namespace corvelin
