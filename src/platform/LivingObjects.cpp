// SPDX-License-Identifier: MIT
#include "platform/LivingObjects.h"

namespace KestrinProductEditor {

std::atomic<long> g_livingObjects = 0;

} // namespace KestrinProductEditor
