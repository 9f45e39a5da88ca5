// SPDX-License-Identifier: MIT
#include "support/Environment.h"
#include "support/TemporaryFolder.h"
#include "support/UserPlaces.h"

namespace KestrinProductEditor {

class ScopedDocumentsFolder::Scope
{
public:
    explicit Scope(const std::filesystem::path& folder) : m_variable("XDG_DOCUMENTS_DIR", folder.string()) {}

private:
    ScopedVariable m_variable;
};

ScopedDocumentsFolder::ScopedDocumentsFolder(const std::filesystem::path& folder)
    : m_scope(std::make_unique<Scope>(folder))
{
}

ScopedDocumentsFolder::~ScopedDocumentsFolder() = default;

class ScopedSettingsPlace::Scope
{
    TemporaryFolder m_folder;
    ScopedVariable m_configuration{"XDG_CONFIG_HOME", m_folder.Path().string()};
};

ScopedSettingsPlace::ScopedSettingsPlace() : m_scope(std::make_unique<Scope>()) {}

ScopedSettingsPlace::~ScopedSettingsPlace() = default;

} // namespace KestrinProductEditor
