// SPDX-License-Identifier: MIT
#pragma once

#include "CompareSteps.h"

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace KestrinProductEditor::Bench {

/// Collects what all rounds measured and prints it as one table of ratios, each beside what it must and what
/// it should reach.
class CompareTable
{
public:
    /// Adds the answers of one step. Throws when the two sides do not agree on an answer "check.*".
    void Take(std::uint32_t count, const Measurements& results);

    void Print(std::ostream& output) const;

private:
    using Samples = std::map<std::string, std::vector<double>>;

    void PrvPrintWorks(std::ostream& output, std::uint32_t count, const Samples& samples) const;
    void PrvPrintMemory(std::ostream& output, std::uint32_t count, const Samples& samples) const;
    void PrvPrintGrowth(std::ostream& output) const;

    std::vector<std::uint32_t> m_counts; // as they came
    std::map<std::uint32_t, Samples> m_samples;
};

} // namespace KestrinProductEditor::Bench
