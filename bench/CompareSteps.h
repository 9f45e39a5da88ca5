// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <span>
#include <string>
#include <string_view>

/// The steps of the comparison. Each runs in a process of its own, so that none warms or fragments another's
/// memory, and answers with what it measured.
namespace KestrinProductEditor::Bench {

/// Microseconds (for one operation), or bytes, by the name of the measurement. The answers named "check.*"
/// are the same from both sides, whatever the times are.
using Measurements = std::map<std::string, double>;

struct StepContext
{
    std::filesystem::path folder; ///< holds the prepared files and what a step writes
    std::uint32_t count = 0;      ///< of products
};

struct Step
{
    std::string_view name;
    void (*run)(const StepContext&, Measurements&);
};

/// Makes the price list, the catalogue, the database file and the prefixes in the folder.
inline constexpr std::string_view kPrepareStep = "prepare";

/// All steps that measure, in the order of a round: one side, then the other.
[[nodiscard]] std::span<const Step> MeasuringSteps();

/// Runs the step `name`. Throws when there is none, and what goes wrong in it.
[[nodiscard]] Measurements RunStep(std::string_view name, const StepContext& context);

} // namespace KestrinProductEditor::Bench
