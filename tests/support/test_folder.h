// SPDX-License-Identifier: GPL-2.0-or-later
// A folder of its own for a test, gone with it, and whole files in one call.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvelin::test {

class TestFolder {
 public:
  TestFolder();
  ~TestFolder();
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  /// The path of a file in the folder, which need not exist.
  [[nodiscard]] std::string path(std::string_view name) const {
    return path_ + "/" + std::string(name);
  }
  /// Writes a file and returns its path.
  std::string file(std::string_view name, std::span<const std::uint8_t> bytes) const;
  std::string file(std::string_view name, std::string_view text) const;
  /// The names of all files in the folder, sorted.
  [[nodiscard]] std::vector<std::string> names() const;

 private:
  std::string path_;
};

std::vector<std::uint8_t> read_file(const std::string& path);
std::string read_text(const std::string& path);

}  // namespace corvelin::test
