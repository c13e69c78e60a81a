// The state of the audio engine.
#include "audio/playback.h"

#include "model/selection.h"

namespace corvelin {

Playback playback;

EditPosition play_position() { return selection.cursor; }

}  // namespace corvelin
