// SPDX-License-Identifier: GPL-2.0-or-later
// Sound devices that a test moves by hand. A test lets the device take or bring a number of bytes,
// as a driver does from time to time, and then has the events delivered.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <numeric>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/devices/wave_device.h"

namespace corvelin::test {

class ScriptedWaveSystem : public WaveSystem {
 public:
  ScriptedWaveSystem() { install_wave_system(this); }
  ~ScriptedWaveSystem() override { install_wave_system(nullptr); }
  ScriptedWaveSystem(const ScriptedWaveSystem&) = delete;
  ScriptedWaveSystem& operator=(const ScriptedWaveSystem&) = delete;

  std::string refusal;                // of the next opening; empty: it succeeds
  bool is_lost = false;               // what the drivers say
  std::vector<std::uint32_t> opened;  // the devices that are open now, by their numbers
  WaveFormat format;                  // of the last opening
  std::vector<std::uint8_t> played;

  /// The device that was opened last takes the next bytes, in one period.
  void play(std::size_t count) {
    std::vector<std::uint8_t> period(count);
    stream_->transfer(period);
    played.insert(played.end(), period.begin(), period.end());
  }

  /// It brings `count` bytes with the values behind `first`, in one period.
  void record(std::size_t count, std::uint8_t first) {
    std::vector<std::uint8_t> period(count);
    std::iota(period.begin(), period.end(), first);
    stream_->transfer(period);
  }

  /// It brings these bytes, in periods of at most 4096.
  void record(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
      std::vector<std::uint8_t> period(
          bytes.begin(),
          bytes.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(4096, bytes.size())));
      bytes = bytes.subspan(period.size());
      stream_->transfer(period);
    }
  }

  std::vector<std::string> device_names(WaveDirection) override { return {"Loud", "Quiet"}; }

  std::unique_ptr<WaveDriver> open(WaveDirection, std::uint32_t device, const WaveFormat& wanted,
                                   std::shared_ptr<WaveStream> stream,
                                   std::string& reason) override {
    reason = refusal;
    if (!refusal.empty()) return nullptr;
    format = wanted;
    stream_ = std::move(stream);
    opened.push_back(device);
    return std::make_unique<Driver>(*this, device);
  }

 private:
  class Driver : public WaveDriver {
   public:
    Driver(ScriptedWaveSystem& system, std::uint32_t device) : system_(system), device_(device) {}
    ~Driver() override { std::erase(system_.opened, device_); }
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;
    [[nodiscard]] bool is_lost() const override { return system_.is_lost; }

   private:
    ScriptedWaveSystem& system_;
    std::uint32_t device_;
  };

  std::shared_ptr<WaveStream> stream_;
};

}  // namespace corvelin::test
