// SPDX-License-Identifier: MIT
#include "platform/ui/Toolkit.h"

#include "platform/ui/PlatformToolkit.h"

namespace KestrinProductEditor {

namespace {

thread_local IToolkit* t_toolkit = nullptr;

} // namespace

IToolkit& Toolkit()
{
    return t_toolkit != nullptr ? *t_toolkit : PlatformToolkit();
}

IToolkit* ToolkitInUse() noexcept
{
    return t_toolkit != nullptr ? t_toolkit : LoadedPlatformToolkit();
}

ScopedToolkit::ScopedToolkit(IToolkit& toolkit) : m_previous(t_toolkit)
{
    t_toolkit = &toolkit;
}

ScopedToolkit::~ScopedToolkit()
{
    t_toolkit = m_previous;
}

} // namespace KestrinProductEditor
