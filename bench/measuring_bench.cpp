// SPDX-License-Identifier: GPL-2.0-or-later
// Measures what decodes a whole file, on an hour of MP3: normalizing and a search for pauses, as a
// user runs them, beside the decoding alone by the same library and beside mp3gain. And what
// encodes: a save encoded anew, beside lame, and a recording, beside the time that it takes up.
#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "platform/codecs/mpeg_decoder.h"
#include "runs.h"

namespace {

using namespace corvelin;
using namespace corvelin::bench;

// What the library alone does with a file: all samples, thrown away.
int decode(const char* path) {
  std::ifstream file(path, std::ios::binary);
  MpegDecoder decoder;
  if (decoder.open(2).fault != DecoderFault::none) return 1;
  std::vector<char> block(65536);
  std::array<std::uint8_t, 4608> samples = {};
  while (file.read(block.data(), static_cast<std::streamsize>(block.size())), file.gcount() > 0) {
    decoder.feed({reinterpret_cast<const std::uint8_t*>(block.data()),
                  static_cast<std::size_t>(file.gcount())});
    std::size_t done = 0;
    while (decoder.take(samples, done) == FrameDecoder::Step::produced) {
    }
  }
  return 0;
}

// The sample of 45 seconds so many times, without its header frame.
void write_sample(const std::string& path, int times) {
  constexpr std::streamoff header_frame = 417;
  std::ifstream sample(CORVELIN_SAMPLES "/vbr.mp3", std::ios::binary);
  sample.seekg(header_frame);
  const std::string frames((std::istreambuf_iterator<char>(sample)), {});
  std::ofstream out(path, std::ios::binary);
  for (int i = 0; i < times; ++i) out << frames;
}

// Samples that an encoder has work with.
std::string noise(std::size_t size) {
  std::minstd_rand random;
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; i += 2)
    bytes[i + 1] = static_cast<char>(random() % 64 - 32);  // the upper byte of a sample
  return bytes;
}

void measure(const std::string& self, const std::string& folder) {
  const std::string hour = folder + "/hour.mp3";
  const std::string target = folder + "/target.mp3";
  const std::string copy = folder + "/copy.mp3";
  constexpr int times = 80;
  write_sample(hour, times);
  const auto edit = [&](const std::vector<std::string>& lines) {
    std::filesystem::remove(target);
    std::vector<std::string> words = {CORVELIN_CLI, hour, "--set", "silence_skip=0"};
    for (const std::string& line : lines) words.insert(words.end(), {"-e", line});
    return run(words);
  };
  const auto costs = best_of({[&] {
                                return run({self, "--decode", hour});
                              },
                              [&] {
                                return edit({"normalize", "save " + target});
                              },
                              [&] { return edit({"pause_detection"}); }, [&] { return edit({}); }});
  report("Normalizing and saving an hour", costs[1], costs[0], "decoding", 1.05);
  report("Pause detection in an hour", costs[2], costs[0], "decoding", 1.15);
  fmt::print("{:44} {:5.1f} MB more than an open document (limit 16)\n", "  memory for the two",
             std::max(costs[1].megabytes, costs[2].megabytes) - costs[3].megabytes);
  if (std::system("command -v mp3gain >/dev/null") != 0) {
    fmt::print("There is no mp3gain to compare with.\n");
    return;
  }
  const auto gain = best_of({[&] {
                               std::filesystem::copy_file(
                                   hour, copy, std::filesystem::copy_options::overwrite_existing);
                               return run({"mp3gain", "-r", "-q", copy});
                             },
                             [&] {
                               return edit({"normalize", "save " + target});
                             }},
                            2);
  report("Normalizing and saving an hour", gain[1], gain[0], "mp3gain -r", 0.2);
}

// At the settings that take LAME the least time, in which all else shows the most.
void measure_encoding(const std::string& folder) {
  const std::string source = folder + "/minutes.mp3";
  const std::string target = folder + "/target.mp3";
  write_sample(source, 8);
  const std::string pipe = "lame --quiet --decode " + source + " - | lame --quiet -b 128 -q 9 - ";
  const auto costs = best_of({[&] {
                                return run({"sh", "-c", pipe + target});
                              },
                              [&] {
                                std::filesystem::remove(target);
                                return run({CORVELIN_CLI, source, "--set", "enc_lam_vbr_method=-1",
                                            "--set", "enc_lam_bitrate=128", "--set",
                                            "enc_lam_quality=1", "-e", "save_reencoded " + target});
                              }},
                             3);
  report("Saving 6 minutes encoded anew", costs[1], costs[0], "lame --decode | lame", 1.1);
}

// From a file in the place of a device, at the highest quality and as fast as it goes.
void measure_recording(const std::string& folder) {
  constexpr std::size_t minute = 44100 * 4 * 60;  // bytes
  const std::string sound = folder + "/sound";
  const std::string target = folder + "/target.mp3";
  std::ofstream(sound, std::ios::binary) << noise(minute);
  ::setenv("SDL_AUDIODRIVER", "disk", 1);
  ::setenv("SDL_DISKAUDIOFILEIN", sound.c_str(), 1);
  ::setenv("SDL_DISKAUDIODELAY", "0", 1);
  const auto cost = best_of({[&] {
                              std::filesystem::remove(target);
                              return run({CORVELIN_CLI, "/rec", target, "--set", "rec_time=1",
                                          "--set", "enc_lam_quality=5", "--set",
                                          "enc_lam_vbr_method=-1", "--set", "enc_lam_bitrate=320"});
                            }},
                            3);
  report("Recording at the highest quality", cost[0], {.milliseconds = 60000}, "its length", 0.15);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::string_view(argv[1]) == "--decode") return decode(argv[2]);
  std::string name = (std::filesystem::temp_directory_path() / "corvelin-bench-XXXXXX").string();
  const std::string folder = ::mkdtemp(name.data());
  measure(argv[0], folder);
  measure_encoding(folder);
  measure_recording(folder);
  std::filesystem::remove_all(folder);
}
