// SPDX-License-Identifier: GPL-2.0-or-later
// The manual speaks of the program as it is: its keys, and the names on its menus, buttons and
// fields.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "edit/command_table.h"
#include "text/ui_text.h"

namespace corvelin::test {
namespace {

using Words = std::set<std::string>;

// What stands in a page between two marks.
Words found_in(const std::string& page, const std::string& pattern) {
  const std::regex expression(pattern);
  Words words;
  for (std::sregex_iterator match(page.begin(), page.end(), expression), end; match != end; ++match)
    words.insert((*match)[1].str());
  return words;
}

// A text as the manual names it: without the mark of its letter, its key and what ends it.
std::string plain(std::string text) {
  text = text.substr(0, std::min(text.find('\t'), text.find("   [")));
  std::erase(text, '&');
  text = std::regex_replace(text, std::regex(" {2,}"), " ");
  while (text.ends_with('.') || text.ends_with(':') || text.ends_with(' ')) text.pop_back();
  return text;
}

Words shown_texts() {
  Words texts;
  for (const TextSection section : {men, win, ttp, msg, cfg, dlg}) {
    for (std::uint32_t number = 0; number < 100; ++number)
      texts.insert(plain(std::string(label_text({section, number}))));
  }
  return texts;
}

Words all_keys() {
  Words keys;
  for (const Command& command : command_table()) {
    std::istringstream list{std::string(command.keys)};
    for (std::string key; list >> std::ws && std::getline(list, key, ',');) {
      if (key.empty()) key = ",";
      keys.insert(key);
    }
    if (command.keys.ends_with(", ,")) keys.insert(",");
  }
  return keys;
}

TEST(Manual, NamesWhatTheProgramHas) {
  const std::filesystem::path folder = CORVELIN_MANUAL;
  const Words texts = shown_texts();
  const Words keys = all_keys();
  int count = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.path().extension() != ".htm") continue;
    SCOPED_TRACE(entry.path().string());
    ++count;
    std::ifstream file(entry.path());
    std::string page{std::istreambuf_iterator<char>(file), {}};
    std::ranges::replace(page, '\n', ' ');
    for (const std::string& key : found_in(page, "<kbd>([^<]*)</kbd>"))
      EXPECT_TRUE(keys.contains(key)) << key;
    for (const std::string& text : found_in(page, "<b>([^<]*)</b>"))
      EXPECT_TRUE(texts.contains(text)) << text;
    for (const std::string& link : found_in(page, R"re((?:href|src)="([^"]*)")re"))
      EXPECT_TRUE(std::filesystem::exists(entry.path().parent_path() / link)) << link;
    if (entry.path().filename() == "keys.htm") {
      EXPECT_EQ(found_in(page, "<kbd>([^<]*)</kbd>"), keys);
    }
  }
  EXPECT_GE(count, 15);
}

}  // namespace
}  // namespace corvelin::test
