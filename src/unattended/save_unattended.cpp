// The names of saves that nobody is asked about.
#include "unattended/save_unattended.h"

#include "document/open_state.h"
#include "exchange/split_save.h"
#include "model/document.h"
#include "platform/host.h"
#include "platform/path.h"

namespace corvelin {

SaveOutcome save_unattended(bool overwrite) {
  const std::string& audio = open_state.audio_name;
  open_state.save_name = overwrite ? audio : audio + std::string(extension_of(audio));
  return save_under_chosen_name(overwrite);
}

SaveOutcome split_unattended(const std::string& folder) {
  if (document.parts.empty()) return SaveOutcome::not_started;
  std::string& target = open_state.split_dest_folder;
  target =
      folder.empty() ? std::string(folder_of(open_state.audio_name)) : in_current_folder(folder);
  if (!target.ends_with('/')) target += '/';
  SplitRun run(target, 1);
  drive(run);
  return run.result() == SplitResult::finished ? SaveOutcome::saved : SaveOutcome::failed;
}

}  // namespace corvelin
