// SPDX-License-Identifier: GPL-2.0-or-later
// The arithmetic of paths. A path is a byte string in this platform's own form with "/" as the
// separator; names that are not valid UTF-8 pass through untouched.
#pragma once

#include <string>
#include <string_view>

namespace corvelin {

/// The folder of a path up to and including its last "/", or empty.
std::string_view folder_of(std::string_view path);

/// What stands behind the last "/".
std::string_view name_of(std::string_view path);

/// The path of a name in a folder, with or without its "/".
std::string in_folder(std::string_view folder, std::string_view name);

/// The last "." of the whole path and what stands behind it, or empty without any ".".
///
/// A point in a folder counts too: "a.b/song" has the extension ".b/song", so a file whose name has
/// no point of its own is of an unknown kind, whatever its folder is called.
std::string_view extension_of(std::string_view path);

/// Whether the extension of `path` is `extension` (point included) in any case.
bool has_extension(std::string_view path, std::string_view extension);

/// `path` with `extension` in the place of its name's own extension, if it has one.
std::string with_extension(std::string_view path, std::string_view extension);

/// The path that a text from a cue sheet, playlist or project means, relative to `folder` (with its
/// "/") unless it is absolute. One that exists is whole, so that a file which is named in two ways
/// is known as the same.
///
/// Such texts come from this platform and from others. So a path that exists as it stands is taken;
/// in any other one backslashes part the folders. One with a drive letter is absolute and leads
/// nowhere here: it is returned as it stands.
std::string path_from_outside(std::string_view text, std::string_view folder);

/// The same for a text in UTF-8 (with `utf8`) or in the ANSI code page.
///
/// Many texts made on this platform are UTF-8 and don't say so. So bytes that lead to a file are
/// not taken for anything else.
std::string path_from_encoded(std::string_view text, bool utf8, std::string_view folder);

/// `path` as a text beside which only `folder` (with its "/") need be known: without the folder in
/// front if the path lies in it or below it, else in full from the root.
std::string relative_to_folder(const std::string& path, const std::string& folder);

/// The whole path from the root on, of one that may be relative to the current folder: with single
/// separators, without "." and "..".
std::string in_current_folder(std::string_view path);

/// The file that `path` leads to through symbolic links, be it still to come, or `path` itself. So
/// a link stays a link when the file behind it is replaced.
std::string behind_links(const std::string& path);

}  // namespace corvelin
