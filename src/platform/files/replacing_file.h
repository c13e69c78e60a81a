// SPDX-License-Identifier: GPL-2.0-or-later
// The replacement of one file by another such that a crash at any moment leaves the old or the new
// one whole: the new one is written beside the old one, synced, and renamed over it.
#pragma once

#include <string>
#include <string_view>
#include <system_error>

#include "platform/files/file.h"

namespace corvelin {

/// What becomes of a file that was written beside another one under a marked name and given up.
enum class LeftBeside { stays, goes };

/// A file on its way to a name. Where nothing has the name yet, it is written under it at once.
///
/// What stands under the name may not have changed between `begin` and `commit`: what another
/// program wrote meanwhile stays. A link stays a link: the file that it leads to is replaced.
class ReplacingFile {
 public:
  ReplacingFile() = default;
  ~ReplacingFile() { give_up(); }
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  OutputFile file;

  /// Creates the file, beside another one under a hidden name. One that is new has these
  /// permissions; one that is write-protected is not replaced.
  std::error_code begin(const std::string& name, std::uint32_t permissions = usual_permissions);

  /// Creates it beside the name in any case, under a free name that a person can make out: with
  /// `mark` and `extension` behind it. "a.mp3" gives "a.mp3.~~~.mp3". What is written there stays
  /// when it can't take its place. Permissions and protection are as with `begin`.
  std::error_code begin_marked(const std::string& name, std::string_view mark,
                               std::string_view extension, std::uint32_t permissions);

  /// Whether the file is written beside another one that it is to replace.
  [[nodiscard]] bool replaces() const { return written_ != name_; }

  /// What the file is to be called, and what it is called now.
  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] const std::string& written_name() const { return written_; }

  /// Has all bytes on disk, if they are to replace others, and closes the file.
  std::error_code complete();

  /// Puts the completed file in its place. After a failure what stood there stands, unless
  /// `has_its_name` says that all but the syncing of the folder was done.
  std::error_code commit();
  [[nodiscard]] bool has_its_name() const { return has_its_name_; }

  /// Closes the file. What stood under the name stands; of a new file what there is stays there,
  /// and so does what was written under a marked name, if it is to.
  void give_up(LeftBeside left = LeftBeside::stays);

  /// Whether a part of the file stands under its written name.
  [[nodiscard]] bool is_unfinished() const { return is_created_ && !has_its_name_; }

 private:
  std::error_code begin_beside(std::string written, std::uint32_t permissions);

  std::string name_;
  std::string written_;
  FileFacts before_;         // of what stands under the name
  bool is_hidden_ = false;   // it is written under a hidden name
  bool is_created_ = false;  // and is there
  bool has_its_name_ = false;
};

/// A free, hidden name under which a new content of `path` can be written beside it: short, as
/// `path` may be as long as names get.
std::string name_beside(const std::string& path);

/// Tells by the first bytes of a file whether it is of some kind.
using KindTest = bool (*)(std::string_view head);

/// `other_kind` when a file that stands under the name, or behind it as a link, is neither empty
/// nor of the kind; also the error of looking. None where there is no file.
std::error_code check_kind(const std::string& path, KindTest is_kind);

/// Writes a text in the place of one of its own kind, or under a name that nothing has. After a
/// failure `path` is as it was, or, when only the folder could not be synced, has the new content,
/// which may not last.
std::error_code replace_text(const std::string& path, std::string_view text, KindTest is_kind);

}  // namespace corvelin
