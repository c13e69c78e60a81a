// SPDX-License-Identifier: GPL-2.0-or-later
// Files for tests.
#include "support/test_folder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace corvelin::test {

TestFolder::TestFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "corvelin-test-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for the test");
  path_ = name;
}

TestFolder::~TestFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TestFolder::file(std::string_view name, std::span<const std::uint8_t> bytes) const {
  return file(name, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

std::string TestFolder::file(std::string_view name, std::string_view text) const {
  std::ofstream out(path(name), std::ios::binary);
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
  if (!out.flush()) throw std::runtime_error("a test file was not written");
  return path(name);
}

std::vector<std::string> TestFolder::names() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path_))
    names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

std::string read_text(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error(path + " is not there");
  return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::uint8_t> read_file(const std::string& path) {
  const std::string text = read_text(path);
  return {text.begin(), text.end()};
}

}  // namespace corvelin::test
