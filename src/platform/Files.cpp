// SPDX-License-Identifier: MIT
#include "platform/Files.h"

namespace KestrinProductEditor {

namespace {

thread_local IFileSystem* t_fileSystem = nullptr;

} // namespace

IFileSystem& FileSystem()
{
    return t_fileSystem != nullptr ? *t_fileSystem : PlatformFileSystem();
}

ScopedFileSystem::ScopedFileSystem(IFileSystem& fileSystem) : m_previous(t_fileSystem)
{
    t_fileSystem = &fileSystem;
}

ScopedFileSystem::~ScopedFileSystem()
{
    t_fileSystem = m_previous;
}

} // namespace KestrinProductEditor
