// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace KestrinProductEditor {

/// What was done to a text, step by step, to be undone and done again.
class Win32EditHistory
{
public:
    struct Step
    {
        std::size_t at = 0;
        std::u16string removed;
        std::u16string inserted;
    };
    enum class Kind
    {
        Typed, ///< one of several that are undone together, where each begins where the one before ended
        Whole,
    };

    void Add(Step step, Kind kind);
    void Clear();
    [[nodiscard]] bool CanUndo() const { return m_done > 0; }
    /// The step that takes back the last one that stands; nothing when there is none.
    [[nodiscard]] std::optional<Step> Undo();
    /// The step that was last taken back; nothing when there is none, or something else was done since.
    [[nodiscard]] std::optional<Step> Redo();

private:
    [[nodiscard]] bool PrvJoin(const Step& step);

    std::vector<Step> m_steps;
    std::size_t m_done = 0;    // how many of them stand
    bool m_isLastOpen = false; // more of its kind may join it
};

} // namespace KestrinProductEditor
