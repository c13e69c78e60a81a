// SPDX-License-Identifier: GPL-2.0-or-later
// Libraries by the dynamic linker.
#include "platform/codecs/dynamic_library.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <utility>

namespace corvelin {

std::string library_folder;

std::string with_package(std::string_view text, std::string_view package) {
  return fmt::format("{}\n\nOn Debian and its kin: install the package {}", text, package);
}

DynamicLibrary::DynamicLibrary(DynamicLibrary&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)) {}

DynamicLibrary& DynamicLibrary::operator=(DynamicLibrary&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

DynamicLibrary::~DynamicLibrary() { unload(); }

std::string DynamicLibrary::load(const char* soname) {
  unload();
  const std::string name = library_folder.empty() ? soname : library_folder + "/" + soname;
  handle_ = ::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ != nullptr) return {};
  const char* const reason = ::dlerror();
  return reason != nullptr ? reason : name + " can't be loaded";
}

void DynamicLibrary::unload() {
  if (handle_ != nullptr) ::dlclose(std::exchange(handle_, nullptr));
}

void* DynamicLibrary::find(const char* name) const {
  return handle_ != nullptr ? ::dlsym(handle_, name) : nullptr;
}

}  // namespace corvelin
