// SPDX-License-Identifier: GPL-2.0-or-later
// Libraries that are looked up while the program runs. One that is missing is an ordinary
// condition: whoever wanted it tells the user, and everything else works without it.
#pragma once

#include <string>
#include <string_view>

namespace corvelin {

/// Owns a loaded library and unloads it.
class DynamicLibrary {
 public:
  DynamicLibrary() = default;
  DynamicLibrary(DynamicLibrary&& other) noexcept;
  DynamicLibrary& operator=(DynamicLibrary&& other) noexcept;
  ~DynamicLibrary();

  /// Loads the library of this soname from where the system keeps its libraries. Returns the
  /// system's words for why it can't, or an empty text.
  std::string load(const char* soname);
  void unload();
  [[nodiscard]] bool is_loaded() const { return handle_ != nullptr; }

  /// Points `entry` to the function of this name. False, and null, when the library has none.
  template <typename Function>
  bool resolve(Function*& entry, const char* name) const {
    entry = reinterpret_cast<Function*>(find(name));
    return entry != nullptr;
  }

 private:
  [[nodiscard]] void* find(const char* name) const;

  void* handle_ = nullptr;
};

/// What the user is told of a missing library, and below it what to install on this platform.
std::string with_package(std::string_view text, std::string_view package);

/// The only folder that is searched, for tests of what happens without a library; empty for the
/// system's own search.
extern std::string library_folder;

}  // namespace corvelin
