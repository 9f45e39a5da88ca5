// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Form.h"
#include "platform/ui/MessageBox.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// What a file dialog asks for.
struct FileDialog
{
    enum class Kind
    {
        Open, ///< an existing file
        Save, ///< asks before an existing file is chosen; the folder must exist
    };

    Kind kind = Kind::Open;
    std::u16string title;
    /// Pairs of a name and a pattern between "|": "Comma Separated Value (*.csv)|*.csv|All Files (*.*)|*.*".
    std::u16string filter;
    /// Added to a typed name without one, with its point: ".csv".
    std::u16string defaultExtension;
    /// The folder it begins in, or the path of a file that is chosen already; empty: wherever it was last.
    std::u16string start;
};

/// The windows of one native toolkit.
class IToolkit
{
public:
    IToolkit() = default;
    IToolkit(const IToolkit&) = delete;
    IToolkit& operator=(const IToolkit&) = delete;
    virtual ~IToolkit() = default;

    /// The form or user control whose layout bears that name, for example "frmProductEditor". Error 5 when no
    /// layout does.
    [[nodiscard]] virtual std::unique_ptr<IForm> CreateForm(std::u16string_view name) = 0;
    [[nodiscard]] virtual std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view name) = 0;
    [[nodiscard]] virtual IMessageBox& Messages() = 0;
    /// The path that the user chose; nothing when the dialog was cancelled.
    [[nodiscard]] virtual std::optional<std::u16string> ChooseFile(const FileDialog& dialog) = 0;
};

/// The toolkit in use on this thread: that of a ScopedToolkit, else the platform's, which is loaded by the
/// first call. Error 445, with the reason in its description, where none can work: it is not installed, there
/// is no display, or the thread is not the one that windows belong to.
[[nodiscard]] IToolkit& Toolkit();

/// Puts another toolkit in its place on this thread, until the end of the scope.
class ScopedToolkit
{
public:
    explicit ScopedToolkit(IToolkit& toolkit);
    ScopedToolkit(const ScopedToolkit&) = delete;
    ScopedToolkit& operator=(const ScopedToolkit&) = delete;
    ~ScopedToolkit();

private:
    IToolkit* m_previous;
};

} // namespace KestrinProductEditor
