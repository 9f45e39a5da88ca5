// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>

namespace KestrinProductEditor {

/// Makes `folder` the user's documents folder until the end of the scope.
class ScopedDocumentsFolder
{
public:
    explicit ScopedDocumentsFolder(const std::filesystem::path& folder);
    ScopedDocumentsFolder(const ScopedDocumentsFolder&) = delete;
    ScopedDocumentsFolder& operator=(const ScopedDocumentsFolder&) = delete;
    ~ScopedDocumentsFolder();

private:
    class Scope;

    std::unique_ptr<Scope> m_scope;
};

/// Gives the platform's settings an empty place of their own until the end of the scope.
class ScopedSettingsPlace
{
public:
    ScopedSettingsPlace();
    ScopedSettingsPlace(const ScopedSettingsPlace&) = delete;
    ScopedSettingsPlace& operator=(const ScopedSettingsPlace&) = delete;
    ~ScopedSettingsPlace();

private:
    class Scope;

    std::unique_ptr<Scope> m_scope;
};

} // namespace KestrinProductEditor
