// SPDX-License-Identifier: GPL-2.0-or-later
// Sound devices by SDL, which is looked up when the first one is asked for.
#pragma once

#include "platform/devices/wave_device.h"

namespace corvelin {

WaveSystem& sdl_wave_system();

}  // namespace corvelin
