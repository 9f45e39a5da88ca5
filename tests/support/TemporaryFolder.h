// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// An empty folder of its own, removed with all that is in it at the end of the scope.
class TemporaryFolder
{
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    [[nodiscard]] const std::filesystem::path& Path() const noexcept { return m_path; }
    /// The path of `name` in the folder, as the file services take it.
    [[nodiscard]] std::u16string File(std::string_view name) const;

    /// Writes a file of that content.
    void Write(std::string_view name, std::string_view content) const;
    /// The content of a file; a test failure and "" when it cannot be read.
    [[nodiscard]] std::string Read(std::string_view name) const;
    /// The names of all that is in the folder, sorted.
    [[nodiscard]] std::vector<std::string> Names() const;

private:
    std::filesystem::path m_path;
};

} // namespace KestrinProductEditor
