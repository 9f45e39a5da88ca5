// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

namespace KestrinProductEditor {

/// What keeps the component in memory: objects that others may hold, and locks of its class factories.
extern std::atomic<long> g_livingObjects;

/// A part of every object that others may hold.
class LivingObject
{
public:
    LivingObject() noexcept { ++g_livingObjects; }
    LivingObject(const LivingObject&) = delete;
    LivingObject& operator=(const LivingObject&) = delete;
    ~LivingObject() { --g_livingObjects; }
};

} // namespace KestrinProductEditor
