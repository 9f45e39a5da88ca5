// SPDX-License-Identifier: MIT
#include "platform/UserLocale.h"

namespace KestrinProductEditor {

namespace {

thread_local const IUserLocale* t_locale = nullptr;

} // namespace

const IUserLocale& UserLocale()
{
    return t_locale != nullptr ? *t_locale : PlatformUserLocale();
}

ScopedUserLocale::ScopedUserLocale(const IUserLocale& locale) : m_previous(t_locale)
{
    t_locale = &locale;
}

ScopedUserLocale::~ScopedUserLocale()
{
    t_locale = m_previous;
}

} // namespace KestrinProductEditor
