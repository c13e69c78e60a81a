// SPDX-License-Identifier: GPL-2.0-or-later
// What became of a command.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/host.h"

namespace corvelin {

enum class Result : std::uint8_t {
  done,
  nothing,  // there was nothing to do
  refused,  // or failed
};

/// The result of an operation, with what the user has to be told: the dispatcher shows that when
/// the view is up to date.
struct Outcome {
  Result result = Result::done;
  std::optional<MessageBox> box = std::nullopt;

  Outcome(Result what) : result(what) {}  // NOLINT(google-explicit-constructor): the usual case
  Outcome(Result what, MessageBox told) : result(what), box(std::move(told)) {}
};

/// A refusal under the caption "Not possible".
Outcome refuse(std::string_view reason);

}  // namespace corvelin
