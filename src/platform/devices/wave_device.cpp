// SPDX-License-Identifier: GPL-2.0-or-later
// The main thread's end of the devices.
#include "platform/devices/wave_device.h"

#include <algorithm>
#include <utility>

#include "platform/devices/sdl_wave_system.h"

namespace corvelin {

namespace {

// What the process has of sound.
struct Sound {
  WaveSystem* system = nullptr;  // in the place of the usual one
  std::vector<WaveDevice*> open_devices;
} sound;

// Some outputs, those without a wire above all, take seconds to wake up.
constexpr std::chrono::seconds longest_stall(5);

}  // namespace

WaveSystem& wave_system() { return sound.system != nullptr ? *sound.system : sdl_wave_system(); }

void install_wave_system(WaveSystem* system) { sound.system = system; }

std::vector<std::string> wave_device_names(WaveDirection direction) {
  return wave_system().device_names(direction);
}

int wave_event_descriptor() { return wave_wake_descriptor(); }

// As long as events are due the descriptor stays readable, so that each of them gets its turn
// beside whatever else waits for the main thread.
bool deliver_wave_events(WaveClock::time_point now) {
  const std::vector<WaveDevice*> devices = sound.open_devices;  // a handler may close any of them
  for (WaveDevice* const device : devices) device->look(now);
  if (std::ranges::any_of(devices, [](WaveDevice* device) { return device->deliver_one(); }))
    return true;
  forget_wake();
  for (WaveDevice* const device : devices) device->arm();
  return false;
}

std::string WaveDevice::open_driver(WaveDirection direction, std::uint32_t device,
                                    const WaveFormat& format,
                                    const std::shared_ptr<WaveStream>& stream, WaveEvents events) {
  std::string reason;
  driver_ = wave_system().open(direction, device, format, stream, reason);
  if (driver_ == nullptr) return reason;
  stream_ = stream;
  events_ = std::move(events);
  moved_ = 0;
  stalled_ = {};
  last_look_ = WaveClock::now();
  is_lost_ = false;
  is_loss_told_ = false;
  sound.open_devices.push_back(this);
  return {};
}

void WaveDevice::close() {
  if (!is_open()) return;
  driver_.reset();
  std::erase(sound.open_devices, this);
  drop_buffers();
}

// A lost device goes on moving bytes, so what it has moved counts only as long as it is found well
// afterwards.
void WaveDevice::look(WaveClock::time_point now) {
  // A main thread that was away itself sees a stall only when it lasts.
  const WaveClock::duration pause =
      std::min<WaveClock::duration>(now - std::exchange(last_look_, now), wave_look_interval);
  const std::uint64_t moved = stream_->moved();
  stalled_ = moved == moved_ && holds_buffers() ? stalled_ + pause : WaveClock::duration();
  is_lost_ = is_lost_ || driver_->is_lost() || stalled_ >= longest_stall;
  if (!is_lost_) moved_ = moved;
}

bool WaveDevice::deliver_one() {
  const WaveEvents events = events_;
  if (WaveHeader* const header = take_done()) {
    events.buffer_done(*header);
    return true;
  }
  if (!is_lost_ || std::exchange(is_loss_told_, true)) return false;
  events.lost();
  return true;
}

// To be woken by the next event, which may have come meanwhile.
void WaveDevice::arm() {
  if (is_lost_) return;
  stream_->tell_change();
  stream_->wake_at(wake_place());
  if (stream_->moved() >= wake_place()) wake_main_thread();
}

std::string WaveOutput::open(std::uint32_t device, const WaveFormat& format, std::size_t queue_size,
                             WaveEvents events) {
  close();
  // What a reset drops keeps its room until the device comes by.
  stream_ = std::make_shared<OutputStream>(2 * queue_size);
  return open_driver(WaveDirection::output, device, format, stream_, std::move(events));
}

void WaveOutput::write(WaveHeader& header) {
  header.was_played = false;
  lent_.push_back({.header = &header});
  pass_on();
  if (lent_.size() == 1) arm();
}

void WaveOutput::pass_on() {
  for (Lent& lent : lent_) {
    if (lent.is_whole) continue;
    const std::span<const std::uint8_t> bytes(lent.header->data.data(), lent.header->length);
    lent.passed_on += stream_->add(bytes.subspan(lent.passed_on), lent.header->is_end);
    lent.end = stream_->added();
    lent.is_whole = lent.passed_on == bytes.size();
    if (!lent.is_whole) return;
  }
}

void WaveOutput::reset() {
  stream_->discard();
  for (const Lent& lent : lent_) reset_.push_back(lent.header);
  lent_.clear();
  if (!reset_.empty()) wake_main_thread();
}

WaveHeader* WaveOutput::take_done() {
  if (!reset_.empty()) {
    WaveHeader* const header = reset_.front();
    reset_.pop_front();
    return header;
  }
  pass_on();
  if (lent_.empty() || !lent_.front().is_whole || lent_.front().end > moved()) return nullptr;
  WaveHeader* const header = lent_.front().header;
  lent_.pop_front();
  header->was_played = true;
  return header;
}

std::uint64_t WaveOutput::wake_place() const {
  if (lent_.empty()) return UINT64_MAX;
  return lent_.front().is_whole ? lent_.front().end : moved() + 1;  // there is room then
}

void WaveOutput::drop_buffers() {
  lent_.clear();
  reset_.clear();
}

std::string WaveInput::open(std::uint32_t device, const WaveFormat& format, std::size_t queue_size,
                            WaveEvents events) {
  close();
  stream_ = std::make_shared<InputStream>(queue_size);
  return open_driver(WaveDirection::input, device, format, stream_, std::move(events));
}

void WaveInput::add(WaveHeader& header) {
  lent_.push_back(&header);
  if (lent_.size() == 1) arm();
}

std::size_t WaveInput::recorded() const {
  return static_cast<std::size_t>(moved() - stream_->taken());
}

std::size_t WaveInput::waiting(std::size_t buffer_size) const {
  return is_open() ? recorded() / buffer_size : 0;
}

std::size_t WaveInput::take_rest(std::span<std::uint8_t> bytes) {
  if (!is_open()) return 0;
  look(WaveClock::now());
  return stream_->take(bytes.first(std::min(bytes.size(), recorded())));
}

WaveHeader* WaveInput::take_done() {
  if (lent_.empty()) return nullptr;
  WaveHeader* const header = lent_.front();
  if (recorded() < header->data.size()) return nullptr;
  lent_.pop_front();
  header->length = stream_->take(header->data);
  return header;
}

std::uint64_t WaveInput::wake_place() const {
  return lent_.empty() ? UINT64_MAX : stream_->taken() + lent_.front()->data.size();
}

void WaveInput::drop_buffers() { lent_.clear(); }

}  // namespace corvelin
