// SPDX-License-Identifier: GPL-2.0-or-later
// The two ends of an open device's bytes.
#include "platform/devices/wave_stream.h"

#include <sys/eventfd.h>

#include <algorithm>
#include <cstring>

namespace corvelin {

namespace {

constexpr std::uint16_t full_volume = 65535;
std::atomic<std::uint16_t> output_volume = full_volume;

void apply_volume(std::span<std::uint8_t> samples) {
  const int volume = output_volume.load(std::memory_order_relaxed);
  if (volume == full_volume) return;
  for (std::size_t at = 0; at + sizeof(std::int16_t) <= samples.size();
       at += sizeof(std::int16_t)) {
    std::int16_t sample = 0;
    std::memcpy(&sample, samples.data() + at, sizeof sample);
    sample = static_cast<std::int16_t>(sample * volume / full_volume);
    std::memcpy(samples.data() + at, &sample, sizeof sample);
  }
}

// Drivers may use it until the process is gone, so nobody closes it.
const int wake_event = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);

}  // namespace

void wave_volume(std::uint16_t level) { output_volume = level; }

int wave_wake_descriptor() { return wake_event; }

// A failure leaves the main thread to its regular look at the devices.
void wake_main_thread() { ::eventfd_write(wake_event, 1); }

void forget_wake() {
  eventfd_t count = 0;
  ::eventfd_read(wake_event, &count);
}

void WaveStream::cancel() {
  is_cancelled_ = true;
  tell_change();
}

void WaveStream::wake_if_due() {
  std::uint64_t due = wake_at_.load();
  // Once: the main thread says anew where it wants to be woken next.
  if (moved() >= due && wake_at_.compare_exchange_strong(due, never)) wake_main_thread();
}

void WaveStream::tell_change() {
  ++changes_;
  changes_.notify_one();
}

bool WaveStream::wait_for_change(std::uint32_t seen) const {
  if (!waits_ || is_cancelled_) return false;
  changes_.wait(seen);
  return !is_cancelled_;
}

void OutputStream::transfer(std::span<std::uint8_t> period) {
  tell_played();  // the device has asked for more, so it has what it took before
  Flow flow = Flow::idle;
  std::size_t got = 0;
  do {
    const std::uint32_t seen = changes();
    flow = flow_.load();  // in front of the read: what an end follows is in the ring by then
    got += ring_.read(period.subspan(got));
    const bool has_ended = got > 0 && flow == Flow::ending;
    if (got == period.size() || has_ended) break;
    if (waits()) tell_played();  // or the rest of the period might wait for room that this gives
    wanted_ = ring_.taken() + period.size() - got;
    if (!wait_for_change(seen)) break;
  } while (true);
  apply_volume(period.first(got));
  std::ranges::fill(period.subspan(got), std::uint8_t{0});
  if (got < period.size() && flow == Flow::flowing) ++underruns_;
}

void OutputStream::tell_played() {
  played_.store(ring_.taken());
  wake_if_due();
}

std::size_t OutputStream::add(std::span<const std::uint8_t> bytes, bool is_end) {
  const std::size_t added = ring_.write(bytes);
  flow_ = is_end && added == bytes.size() ? Flow::ending : Flow::flowing;
  if (is_end || ring_.written() >= wanted_.load()) tell_change();
  return added;
}

void OutputStream::discard() {
  flow_ = Flow::idle;
  ring_.discard();
}

void InputStream::transfer(std::span<std::uint8_t> period) {
  std::span<const std::uint8_t> rest = period;
  do {
    const std::uint32_t seen = changes();
    rest = rest.subspan(ring_.write(rest));
    wake_if_due();
    if (rest.empty() || !wait_for_change(seen)) break;
  } while (true);
  lost_ += rest.size();
}

std::size_t InputStream::take(std::span<std::uint8_t> bytes) {
  const std::size_t taken = ring_.read(bytes);
  tell_change();
  return taken;
}

}  // namespace corvelin
