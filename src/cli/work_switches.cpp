// The table of work switches, and the work.
#include "cli/work_switches.h"

#include "cli/headless_host.h"
#include "document/open_state.h"
#include "unattended/save_unattended.h"

namespace corvelin {

namespace {

SaveOutcome save(const WorkRequest& request, HeadlessHost&) {
  return save_unattended(request.overwrite);
}

SaveOutcome split(const WorkRequest& request, HeadlessHost&) {
  return split_unattended(request.folder);
}

constexpr WorkSwitch table[] = {
    {"save", "Save beside the file: song.mp3 gives song.mp3.mp3", false, true, true, save},
    {"normalize", "Not available yet", false, true, true, nullptr},
    {"autocrop", "Not available yet", false, true, true, nullptr},
    {"autocue", "Not available yet", true, false, true, nullptr},
    {"pausesplit", "Not available yet", true, false, true, nullptr},
    {"split", "Save a file a track, in FOLDER or beside the audio", true, false, true, split},
    {"rec", "Not available yet", false, false, false, nullptr},
};

}  // namespace

std::span<const WorkSwitch> work_switches() { return table; }

}  // namespace corvelin
