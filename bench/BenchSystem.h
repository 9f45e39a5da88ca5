// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// What each system does in its own way.
namespace KestrinProductEditor::Bench {

/// Lets the process read the generated price lists as they were written, where a process can choose that.
void UseConventionsOfLists();

[[nodiscard]] std::uint32_t ProcessNumber();

/// The resident memory of this process, exact to the page.
[[nodiscard]] double ResidentBytes();

/// Brings what was written into the folder to the disk: a later sync would wait for it too.
void Settle(const std::filesystem::path& folder);

/// Runs this program anew with these arguments, and tells what it printed; nothing when it fails.
[[nodiscard]] std::optional<std::string> OutputOfThisProgram(const std::vector<std::string>& arguments);

} // namespace KestrinProductEditor::Bench
