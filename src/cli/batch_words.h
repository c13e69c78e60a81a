// SPDX-License-Identifier: GPL-2.0-or-later
// The words of --do: what a batch is to do with each file.
#pragma once

#include <cstdint>
#include <string>

#include "unattended/batch_job.h"

namespace corvelin {

/// What `batch_bottom` is until a word sets it.
constexpr std::uint8_t no_bottom_given = 255;

/// Adds a word, such as "level=-3", to the job. What is wrong with it, or empty: it is unknown, its
/// values are none, or it excludes a word before it.
std::string take_batch_word(const std::string& word, BatchJob& job);

/// The words, for --help.
std::string batch_help();

}  // namespace corvelin
