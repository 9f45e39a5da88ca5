// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

/// What the benchmarks of windows have in common, whatever the windows are made of.
namespace KestrinProductEditor::Bench {

/// The list of an editor that is open. An act of its user is over when its last pixel is painted.
class IEditorList
{
public:
    virtual ~IEditorList() = default;

    virtual void ScrollPage() = 0;
    virtual void StepDown() = 0;
    virtual void SelectAll() = 0;
    virtual void JumpToBothEnds() = 0; ///< to the beginning, then to the end
    [[nodiscard]] virtual std::int32_t SelectedRows() const = 0;
    /// The first row is 1.
    [[nodiscard]] virtual std::int32_t CurrentRow() const = 0;
};

/// Measures the use of a list that was painted `opened` microseconds after the call of Show, prints that and
/// ends the process. May be called from anywhere in the editor's loop.
[[noreturn]] void AnswerForEditor(double opened, IEditorList& list) noexcept;

struct WindowBench
{
    std::string_view program; ///< its name
    double mostOpenings;      ///< that the editor's opening may take, in openings of the store alone
    /// Shows the editor, which opens the catalogue that was set, and calls AnswerForEditor when its list was
    /// painted for the first time. The user's settings stay as they are; others may lie in `folder`.
    std::function<void(const std::filesystem::path& folder)> showEditor;
};

/// The whole program: options, a process for each measurement, the table. Returns the exit status.
[[nodiscard]] int RunWindowBench(const WindowBench& bench, int argc, char* argv[]);

} // namespace KestrinProductEditor::Bench
