// SPDX-License-Identifier: GPL-2.0-or-later
// The files that a replacing save writes beside a source until they take its place, where a batch
// finds them in its folder: they are no audio to work on, and those of saves that broke off can go.
#pragma once

#include <string>
#include <string_view>

#include "unattended/batch_job.h"

namespace corvelin {

/// Whether a file has the name of what is written beside a source: "a.mp3.~~~.mp3".
bool is_leftover(std::string_view name);

/// "a.mp3.~~~.mp3: left out, ...", for a name in `leftovers` of a job.
std::string told_of_leftover(const std::string& name);

/// Whether no save is writing it any more, so that it can go.
bool is_given_up(const std::string& leftover);

/// Asks whether those leftovers that no save is writing any more are to be removed, and does so.
/// One that can't be removed is told with the cause. Nothing is asked where there is none.
void offer_removal_of_leftovers(BatchJob& job);

}  // namespace corvelin
