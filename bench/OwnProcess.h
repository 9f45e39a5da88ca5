// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor::Bench {

/// A folder of this run, gone with all its files at the end.
class RunFolder
{
public:
    /// A new folder in `parent`, named after the program.
    RunFolder(const std::filesystem::path& parent, std::string_view program);
    RunFolder(const RunFolder&) = delete;
    RunFolder& operator=(const RunFolder&) = delete;
    ~RunFolder();

    [[nodiscard]] const std::filesystem::path& Path() const noexcept { return m_path; }

private:
    std::filesystem::path m_path;
};

/// Runs this program anew with these arguments, when all that was written into `folder` has reached the disk,
/// and reads its answers: one "name value" a line. Throws when it fails.
[[nodiscard]] std::map<std::string, double> RunInOwnProcess(const std::vector<std::string>& arguments,
                                                            const std::filesystem::path& folder);

} // namespace KestrinProductEditor::Bench
