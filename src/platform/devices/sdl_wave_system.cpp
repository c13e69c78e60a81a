// SPDX-License-Identifier: GPL-2.0-or-later
// SDL's audio part, as it is known at version 2.26.
#include "platform/devices/sdl_wave_system.h"

#include <SDL.h>
#include <sys/prctl.h>

#include <algorithm>
#include <mutex>
#include <string_view>
#include <utility>

#include "platform/codecs/dynamic_library.h"
#include "platform/processes/patient_thread.h"

namespace corvelin {

namespace {

// What is used of the library. It stays loaded, as threads of its own may still run in it.
struct Sdl {
  DynamicLibrary library;
  decltype(::SDL_SetHint)* SetHint = nullptr;
  decltype(::SDL_LogSetOutputFunction)* LogSetOutputFunction = nullptr;
  decltype(::SDL_InitSubSystem)* InitSubSystem = nullptr;
  decltype(::SDL_QuitSubSystem)* QuitSubSystem = nullptr;
  decltype(::SDL_WasInit)* WasInit = nullptr;
  decltype(::SDL_EventState)* EventState = nullptr;
  decltype(::SDL_GetError)* GetError = nullptr;
  decltype(::SDL_GetCurrentAudioDriver)* GetCurrentAudioDriver = nullptr;
  decltype(::SDL_GetNumAudioDevices)* GetNumAudioDevices = nullptr;
  decltype(::SDL_GetAudioDeviceName)* GetAudioDeviceName = nullptr;
  decltype(::SDL_OpenAudioDevice)* OpenAudioDevice = nullptr;
  decltype(::SDL_PauseAudioDevice)* PauseAudioDevice = nullptr;
  decltype(::SDL_GetAudioDeviceStatus)* GetAudioDeviceStatus = nullptr;
  decltype(::SDL_CloseAudioDevice)* CloseAudioDevice = nullptr;

  std::string load();
  std::string start();
};

constexpr const char* soname = "libSDL2-2.0.so.0";

// Why it can't be loaded, or an empty text.
std::string Sdl::load() {
  if (library.is_loaded()) return {};
  const std::string reason = library.load(soname);
  if (!reason.empty()) return with_package(reason, "libsdl2-2.0-0");
  const bool is_whole = library.resolve(SetHint, "SDL_SetHint") &&
                        library.resolve(LogSetOutputFunction, "SDL_LogSetOutputFunction") &&
                        library.resolve(InitSubSystem, "SDL_InitSubSystem") &&
                        library.resolve(QuitSubSystem, "SDL_QuitSubSystem") &&
                        library.resolve(WasInit, "SDL_WasInit") &&
                        library.resolve(EventState, "SDL_EventState") &&
                        library.resolve(GetError, "SDL_GetError") &&
                        library.resolve(GetCurrentAudioDriver, "SDL_GetCurrentAudioDriver") &&
                        library.resolve(GetNumAudioDevices, "SDL_GetNumAudioDevices") &&
                        library.resolve(GetAudioDeviceName, "SDL_GetAudioDeviceName") &&
                        library.resolve(OpenAudioDevice, "SDL_OpenAudioDevice") &&
                        library.resolve(PauseAudioDevice, "SDL_PauseAudioDevice") &&
                        library.resolve(GetAudioDeviceStatus, "SDL_GetAudioDeviceStatus") &&
                        library.resolve(CloseAudioDevice, "SDL_CloseAudioDevice");
  if (is_whole) return {};
  library.unload();
  return std::string(soname) + " lacks functions";
}

// One of the libraries that SDL may sit on writes its errors to the terminal by itself.
void drop_message(const char*, int, const char*, int, const char*, ...) {}

void silence_alsa() {
  static DynamicLibrary alsa;
  int (*set_error_handler)(decltype(drop_message)*) = nullptr;
  if (alsa.is_loaded() || !alsa.load("libasound.so.2").empty()) return;
  if (alsa.resolve(set_error_handler, "snd_lib_error_set_handler")) set_error_handler(drop_message);
}

// Starts the audio part unless it runs. Why it can't, or an empty text.
std::string Sdl::start() {
  std::string reason = load();
  if (!reason.empty() || WasInit(SDL_INIT_AUDIO) != 0) return reason;
  SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");  // or it would take Ctrl+C
  LogSetOutputFunction([](void*, int, SDL_LogPriority, const char*) {}, nullptr);
  silence_alsa();
  if (InitSubSystem(SDL_INIT_AUDIO) != 0) return GetError();
  for (const SDL_EventType type : {SDL_AUDIODEVICEADDED, SDL_AUDIODEVICEREMOVED})
    EventState(type, SDL_IGNORE);  // nobody would ever fetch them
  return {};
}

// All calls into the library but the two that only look are made on one thread, one at a time.
struct Workshop {
  Sdl sdl;
  PatientThread thread;
  int open_devices = 0;  // for the thread alone
};

Workshop& workshop() {
  static Workshop& only = *new Workshop;  // SDL's threads run until the process is gone
  return only;
}

// The time that a device has to answer.
constexpr std::chrono::seconds patience(2);

// About 20 ms and a power of two, as closing takes as long as two periods.
std::uint16_t period_of(const WaveFormat& format) {
  std::uint16_t samples = 1024;
  while (samples > 128 && samples * 42u > format.samples_per_sec) samples /= 2;
  return samples;
}

bool is_capture(WaveDirection direction) { return direction == WaveDirection::input; }

void SDLCALL transfer(void* stream, Uint8* bytes, int count) {
  static_cast<WaveStream*>(stream)->transfer({bytes, static_cast<std::size_t>(count)});
}

// An opening that the thread is at. Whoever comes later finds what the other has left.
struct Opening {
  std::shared_ptr<WaveStream> stream;
  std::mutex mutex;
  bool is_given_up = false;
  SDL_AudioDeviceID device = 0;
  std::string reason = "the sound system does not answer";
};

// The next start then finds the devices, and the sound system, that there are by that time.
void stop_if_unused() {
  Workshop& shop = workshop();
  if (shop.open_devices == 0) shop.sdl.QuitSubSystem(SDL_INIT_AUDIO);
}

void close_device(const Opening& opening) {
  opening.stream->cancel();
  workshop().sdl.CloseAudioDevice(opening.device);
  --workshop().open_devices;
  stop_if_unused();
}

// Opens the device and lets it run, or leaves the reason why it can't.
SDL_AudioDeviceID open_device(WaveDirection direction, std::uint32_t number,
                              const WaveFormat& format, WaveStream& stream, std::string& reason) {
  Sdl& sdl = workshop().sdl;
  reason = sdl.start();
  if (!reason.empty()) return 0;
  ::prctl(PR_SET_TIMERSLACK, 1);  // nanoseconds; of the device's thread, which is to be on time
  const char* name = nullptr;
  if (number != 0) {
    const int count = sdl.GetNumAudioDevices(is_capture(direction));
    if (number > static_cast<std::uint32_t>(std::max(count, 0))) {
      reason = "there is no device " + std::to_string(number);
      return 0;
    }
    name = sdl.GetAudioDeviceName(static_cast<int>(number - 1), is_capture(direction));
  }
  // A file stands in for the device there, and takes bytes as fast as they come.
  const bool is_file = std::string_view(sdl.GetCurrentAudioDriver()) == "disk";
  if (is_file) stream.wait_in_transfer();
  SDL_AudioSpec spec = {};
  spec.freq = static_cast<int>(format.samples_per_sec);
  spec.format = AUDIO_S16SYS;
  spec.channels = static_cast<Uint8>(format.channels);
  spec.samples = period_of(format);
  if (is_file) spec.samples *= 2;  // each costs a switch of threads
  spec.callback = transfer;
  spec.userdata = &stream;
  const SDL_AudioDeviceID device =
      sdl.OpenAudioDevice(name, is_capture(direction), &spec, nullptr, 0);
  if (device == 0) {
    reason = sdl.GetError();
    stop_if_unused();
    return 0;
  }
  ++workshop().open_devices;
  sdl.PauseAudioDevice(device, 0);
  return device;
}

class SdlDriver : public WaveDriver {
 public:
  explicit SdlDriver(std::shared_ptr<Opening> opening) : opening_(std::move(opening)) {}
  ~SdlDriver() override {
    workshop().thread.run([opening = opening_] { close_device(*opening); }, patience);
  }
  SdlDriver(const SdlDriver&) = delete;
  SdlDriver& operator=(const SdlDriver&) = delete;

  [[nodiscard]] bool is_lost() const override {
    return workshop().sdl.GetAudioDeviceStatus(opening_->device) == SDL_AUDIO_STOPPED;
  }

 private:
  std::shared_ptr<Opening> opening_;  // with the stream, which lives until the device is closed
};

class SdlWaveSystem : public WaveSystem {
 public:
  std::vector<std::string> device_names(WaveDirection direction) override {
    const auto names = std::make_shared<std::vector<std::string>>();
    const auto list = [names, direction] {
      Sdl& sdl = workshop().sdl;
      if (!sdl.start().empty()) return;
      const int count = sdl.GetNumAudioDevices(is_capture(direction));
      for (int i = 0; i < count; ++i) {
        const char* const name = sdl.GetAudioDeviceName(i, is_capture(direction));
        names->emplace_back(name != nullptr ? name : "");
      }
      stop_if_unused();
    };
    if (!workshop().thread.run(list, patience)) return {};
    return *names;
  }

  std::unique_ptr<WaveDriver> open(WaveDirection direction, std::uint32_t device,
                                   const WaveFormat& format, std::shared_ptr<WaveStream> stream,
                                   std::string& reason) override {
    // A rate of 0 would be taken for another one.
    const bool is_pcm = format == pcm_16_bit(format.channels, format.samples_per_sec);
    if (!is_pcm || format.channels == 0 || format.channels > 2 || format.samples_per_sec == 0) {
      reason = "no device plays or records in this format";
      return nullptr;
    }
    const auto opening = std::make_shared<Opening>();
    opening->stream = std::move(stream);
    const auto work = [opening, direction, device, format] {
      {
        const std::lock_guard lock(opening->mutex);
        if (opening->is_given_up) return;
      }
      std::string why_not;
      const SDL_AudioDeviceID opened =
          open_device(direction, device, format, *opening->stream, why_not);
      const std::lock_guard lock(opening->mutex);
      opening->reason = why_not;
      opening->device = opened;
      if (opening->is_given_up && opened != 0) close_device(*opening);
    };
    workshop().thread.run(work, patience);
    const std::lock_guard lock(opening->mutex);
    opening->is_given_up = opening->device == 0;
    reason = opening->reason;
    if (opening->is_given_up) return nullptr;
    return std::make_unique<SdlDriver>(opening);
  }
};

}  // namespace

WaveSystem& sdl_wave_system() {
  static SdlWaveSystem system;
  return system;
}

}  // namespace corvelin
