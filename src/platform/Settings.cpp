// SPDX-License-Identifier: MIT
#include "platform/Settings.h"

namespace KestrinProductEditor {

namespace {

thread_local ISettings* t_settings = nullptr;

} // namespace

ISettings& Settings()
{
    return t_settings != nullptr ? *t_settings : PlatformSettings();
}

ScopedSettings::ScopedSettings(ISettings& settings) : m_previous(t_settings)
{
    t_settings = &settings;
}

ScopedSettings::~ScopedSettings()
{
    t_settings = m_previous;
}

} // namespace KestrinProductEditor
