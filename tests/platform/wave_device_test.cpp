// SPDX-License-Identifier: GPL-2.0-or-later
// Buffers on their way to and from a device, with a device moved by hand and with SDL's drivers for
// files.
#include "platform/devices/wave_device.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <future>
#include <thread>

#include "platform/codecs/dynamic_library.h"
#include "platform/processes/patient_thread.h"
#include "support/scripted_wave_system.h"
#include "support/test_folder.h"

namespace corvelin::test {
namespace {

using Samples = std::vector<std::uint8_t>;

constexpr WaveFormat format = pcm_16_bit(2, 44100);

// What came back, as "A B- lost": a buffer is called by its note, with "-" when it was not played.
std::string happened;
std::function<void(WaveHeader&)> on_done;

const WaveEvents events = {.buffer_done =
                               [](WaveHeader& header) {
                                 happened += std::string(1, static_cast<char>(header.user)) +
                                             (header.was_played ? "" : "-") + " ";
                                 if (on_done) on_done(header);
                               },
                           .lost = [] { happened += "lost "; }};

// All events that are due.
std::string deliver(WaveClock::time_point now = WaveClock::now()) {
  happened.clear();
  while (deliver_wave_events(now)) {
  }
  return happened;
}

bool wakes() {
  pollfd due = {.fd = wave_event_descriptor(), .events = POLLIN};
  return ::poll(&due, 1, 0) > 0;
}

Samples counting(std::size_t count, std::uint8_t first = 0) {
  Samples bytes(count);
  std::iota(bytes.begin(), bytes.end(), first);
  return bytes;
}

WaveHeader buffer(char name, Samples bytes) {
  WaveHeader header;
  header.length = bytes.size();
  header.data = std::move(bytes);
  header.user = static_cast<std::uint8_t>(name);
  return header;
}

class WaveDeviceTest : public ::testing::Test {
 protected:
  WaveDeviceTest() {
    on_done = nullptr;
    wave_volume(65535);  // another test may have turned it down
  }

  ScriptedWaveSystem system;
  WaveHeader a = buffer('A', counting(100));
  WaveHeader b = buffer('B', counting(100, 100));
  WaveHeader c = buffer('C', counting(100, 200));
  WaveOutput output;
  WaveInput input;
};

TEST_F(WaveDeviceTest, GivesABufferBackWhenTheDeviceAsksForMore) {
  ASSERT_EQ(output.open(1, format, 300, events), "");
  EXPECT_EQ(system.opened, std::vector{1U});
  c.is_end = true;
  for (WaveHeader* const header : {&a, &b, &c}) output.write(*header);
  EXPECT_EQ(deliver(), "");
  system.play(150);
  EXPECT_EQ(deliver(), "");  // taken, but on its way
  EXPECT_FALSE(wakes());
  system.play(100);
  EXPECT_TRUE(wakes());
  EXPECT_EQ(deliver(), "A ");
  EXPECT_FALSE(wakes());
  system.play(100);
  EXPECT_EQ(deliver(), "B ");
  system.play(1);
  EXPECT_EQ(deliver(), "C ");
  Samples all = counting(300);
  all.resize(351);  // silence
  EXPECT_EQ(system.played, all);
  EXPECT_EQ(output.underruns(), 0U);  // it ran dry behind the end
}

TEST_F(WaveDeviceTest, CountsInterruptionsWhichHoldThePosition) {
  output.open(0, format, 300, events);
  system.play(64);  // nothing to be interrupted yet
  output.write(a);
  system.play(128);
  system.play(64);
  EXPECT_EQ(deliver(), "A ");
  output.write(b);
  system.play(100);
  EXPECT_EQ(deliver(), "");
  EXPECT_EQ(output.underruns(), 2U);
  EXPECT_TRUE(std::ranges::equal(b.data, std::span(system.played).last(100)));
}

TEST_F(WaveDeviceTest, AResetGivesAllBackUnplayedHoweverOften) {
  output.open(0, format, 300, events);
  for (int round = 0; round < 5; ++round) {
    for (WaveHeader* const header : {&a, &b, &c}) output.write(*header);
    output.reset();
    EXPECT_TRUE(wakes());
    EXPECT_EQ(deliver(), "A- B- C- ");
  }
  for (WaveHeader* const header : {&a, &b, &c}) output.write(*header);
  system.play(100);  // makes room for what did not fit
  EXPECT_EQ(deliver(), "");
  system.played.clear();
  for (int period = 0; period < 4; ++period) {
    system.play(100);
    deliver();
  }
  const Samples all = counting(300);
  EXPECT_NE(std::search(system.played.begin(), system.played.end(), all.begin() + 100, all.end()),
            system.played.end());
}

TEST_F(WaveDeviceTest, ALostDeviceTellsOnceAndPlaysNothingMore) {
  output.open(0, format, 300, events);
  output.write(a);
  output.write(b);
  system.play(100);
  system.play(50);
  EXPECT_EQ(deliver(), "A ");
  system.play(100);
  system.is_lost = true;
  system.play(100);
  EXPECT_EQ(deliver(), "lost ");
  EXPECT_EQ(deliver(), "");
}

TEST_F(WaveDeviceTest, ADeviceThatStandsStillIsLost) {
  output.open(0, format, 300, events);
  output.write(a);
  WaveClock::time_point now = WaveClock::now();
  EXPECT_EQ(deliver(now += std::chrono::hours(1)), "");  // the main thread was away itself
  std::string seen;
  for (int looks = 0; looks < 25 && seen.empty(); ++looks)
    seen = deliver(now += wave_look_interval);
  EXPECT_EQ(seen, "lost ");
}

TEST_F(WaveDeviceTest, AHandlerMayCloseAndOpenTheDevice) {
  output.open(0, format, 300, events);
  output.write(a);
  output.write(b);
  on_done = [this](WaveHeader&) {
    output.close();
    output.open(0, format, 300, events);
  };
  system.play(200);
  system.play(1);
  EXPECT_EQ(deliver(), "A ");  // the other is the owner's again without an event
  EXPECT_TRUE(output.is_open());
}

TEST_F(WaveDeviceTest, FillsBuffersInOrderAndCountsWhatNobodyFetched) {
  ASSERT_EQ(input.open(0, format, 256, events), "");
  input.add(a);
  input.add(b);
  system.record(99, 1);
  EXPECT_EQ(deliver(), "");
  system.record(150, 100);
  EXPECT_EQ(input.waiting(100), 0U);  // as of the last look
  EXPECT_EQ(deliver(), "A- B- ");
  EXPECT_EQ(a.data, counting(100, 1));
  EXPECT_EQ(b.data, counting(100, 101));
  EXPECT_EQ(b.length, 100U);
  system.record(300, 1);
  EXPECT_EQ(input.lost_bytes(), 93U);  // 49 + 207 had room
  deliver();
  EXPECT_EQ(input.waiting(100), 2U);
  Samples rest(300);
  EXPECT_EQ(input.take_rest(rest), 256U);
  EXPECT_EQ(rest[0], 201U);
}

TEST_F(WaveDeviceTest, AnInputThatIsLostKeepsWhatItBroughtBefore) {
  input.open(0, format, 256, events);
  system.record(150, 1);
  EXPECT_EQ(deliver(), "");
  system.is_lost = true;
  system.record(50, 0);  // silence that nobody recorded
  input.add(a);
  input.add(b);
  EXPECT_EQ(deliver(), "A- lost ");
  Samples rest(300);
  EXPECT_EQ(input.take_rest(rest), 50U);
}

TEST_F(WaveDeviceTest, VolumeScalesWhatIsPlayed) {
  output.open(0, pcm_16_bit(1, 8000), 300, events);
  WaveHeader sample = buffer('S', {0x00, 0x40, 0x00, 0x80});  // 16384, -32768
  output.write(sample);
  wave_volume(32768);
  system.play(4);
  wave_volume(65535);
  EXPECT_EQ(system.played, (Samples{0x00, 0x20, 0x00, 0xC0}));
}

// The driver's end runs on a thread of its own and takes what it gets.
TEST(WaveStream, BringsEveryByteOverBetweenTwoThreads) {
  constexpr std::size_t total = 1 << 20;
  OutputStream stream(1000);
  stream.wait_in_transfer();
  Samples played(total);
  std::thread driver([&] {
    for (std::size_t at = 0; at < total; at += 256)
      stream.transfer(std::span(played).subspan(at, 256));
  });
  const Samples bytes = counting(total);
  for (std::size_t at = 0; at < total;) {
    const std::size_t count = std::min<std::size_t>(333, total - at);
    const std::size_t added = stream.add(std::span(bytes).subspan(at, count), false);
    if (added == 0) std::this_thread::yield();
    at += added;
  }
  driver.join();
  EXPECT_EQ(played, bytes);
}

class SdlTest : public ::testing::Test {
 protected:
  SdlTest() {
    on_done = nullptr;
    happened.clear();
    ::setenv("SDL_AUDIODRIVER", "disk", 1);
    ::setenv("SDL_DISKAUDIODELAY", "0", 1);
    ::setenv("SDL_DISKAUDIOFILE", folder.path("out").c_str(), 1);
  }
  ~SdlTest() override {
    for (const char* const name :
         {"SDL_AUDIODRIVER", "SDL_DISKAUDIODELAY", "SDL_DISKAUDIOFILE", "SDL_DISKAUDIOFILEIN"})
      ::unsetenv(name);
  }

  // Waits for events until `is_done` says so, with a limit that only a fault reaches.
  template <typename Condition>
  static bool wait_until(Condition is_done) {
    for (int rounds = 0; rounds < 1000 && !is_done(); ++rounds) {
      pollfd due = {.fd = wave_event_descriptor(), .events = POLLIN};
      ::poll(&due, 1, static_cast<int>(wave_look_interval.count()));
      deliver_wave_events();
    }
    return is_done();
  }

  TestFolder folder;
  WaveOutput output;
  WaveInput input;
};

TEST_F(SdlTest, PlaysEveryByteOfAQueueThatIsKeptFilled) {
  struct sigaction before = {};
  ::sigaction(SIGINT, nullptr, &before);
  ASSERT_EQ(output.open(0, format, 40000, events), "");
  std::vector<WaveHeader> headers(4, buffer('A', Samples(10000)));
  std::string expected;
  const auto send = [&](WaveHeader& header) {
    const std::size_t number = expected.size() / header.data.size();
    std::ranges::fill(header.data, static_cast<std::uint8_t>(number + 1));
    expected.append(header.data.begin(), header.data.end());
    header.is_end = number == 99;
    output.write(header);
  };
  std::ranges::for_each(headers, send);
  on_done = [&](WaveHeader& header) {
    if (expected.size() < 1000000) send(header);
  };
  EXPECT_TRUE(wait_until([] { return happened.size() == 200; }));
  output.close();
  struct sigaction after = {};
  ::sigaction(SIGINT, nullptr, &after);
  EXPECT_EQ(after.sa_handler, before.sa_handler);  // Ctrl+C still is the program's
  EXPECT_EQ(output.underruns(), 0U);
  const std::string played = read_text(folder.path("out"));
  EXPECT_NE(played.find(expected), std::string::npos);
}

TEST_F(SdlTest, RecordsEveryByteHoweverSlowlyItIsFetched) {
  std::string bytes(500000, ' ');
  for (std::size_t at = 0; at < bytes.size(); ++at) bytes[at] = static_cast<char>(at % 251 + 1);
  ::setenv("SDL_DISKAUDIOFILEIN", folder.file("in", bytes).c_str(), 1);
  ASSERT_EQ(input.open(0, format, 16384, events), "");
  std::string recorded;
  std::vector<WaveHeader> headers(2, buffer('A', Samples(10000)));
  for (WaveHeader& header : headers) input.add(header);
  on_done = [&](WaveHeader& header) {
    recorded.append(header.data.begin(), header.data.end());
    input.add(header);
  };
  EXPECT_TRUE(wait_until([&] { return recorded.size() >= bytes.size(); }));
  EXPECT_EQ(recorded.substr(0, bytes.size()), bytes);
  EXPECT_EQ(input.lost_bytes(), 0U);
}

TEST_F(SdlTest, ADeviceThatVanishesIsLostAndAnotherCanBeOpened) {
  ::setenv("SDL_DISKAUDIOFILE", "/dev/full", 1);
  ASSERT_EQ(output.open(0, format, 40000, events), "");
  WaveHeader header = buffer('A', Samples(40000));
  output.write(header);
  EXPECT_TRUE(wait_until([] { return happened == "lost "; })) << happened;
  ::setenv("SDL_DISKAUDIOFILE", folder.path("out").c_str(), 1);
  EXPECT_EQ(output.open(0, format, 40000, events), "");
}

TEST_F(SdlTest, TellsWhyADeviceCanNotBeOpened) {
  EXPECT_EQ(wave_device_names(WaveDirection::output).size(), 1U);
  EXPECT_EQ(output.open(2, format, 1000, events), "there is no device 2");
  EXPECT_NE(output.open(0, pcm_16_bit(2, 0), 1000, events), "");
  ::setenv("SDL_DISKAUDIOFILE", folder.path("absent/out").c_str(), 1);
  EXPECT_NE(output.open(0, format, 1000, events), "");
  ::setenv("SDL_AUDIODRIVER", "absent", 1);
  EXPECT_NE(output.open(0, format, 1000, events), "");
  EXPECT_TRUE(wave_device_names(WaveDirection::output).empty());
}

// In a process of its own, as the library stays loaded.
TEST_F(SdlTest, NamesThePackageThatIsMissing) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto open_without_library = [this] {
    library_folder = folder.path("");
    std::fputs(output.open(0, format, 1000, events).c_str(), stderr);
    std::_Exit(0);
  };
  EXPECT_EXIT(open_without_library(), ::testing::ExitedWithCode(0), "libSDL2.*\n\n.*libsdl2-2.0-0");
}

TEST(PatientThread, DoesNotWaitForWorkThatHangs) {
  PatientThread thread;
  const auto gate = std::make_shared<std::promise<void>>();
  EXPECT_FALSE(thread.run([gate] { gate->get_future().wait(); }, std::chrono::milliseconds(0)));
  const auto order = std::make_shared<std::string>();
  EXPECT_FALSE(thread.run([order] { *order += 'a'; }, std::chrono::milliseconds(0)));
  EXPECT_EQ(*order, "");
  gate->set_value();
  EXPECT_TRUE(thread.run([order] { *order += 'b'; }, std::chrono::minutes(1)));
  EXPECT_EQ(*order, "ab");
}

}  // namespace
}  // namespace corvelin::test
