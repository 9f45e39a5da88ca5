// SPDX-License-Identifier: MIT
#include "exchange/CsvFileDialog.h"

#include "platform/Shell.h"
#include "util/modShell.h"

namespace KestrinProductEditor {

std::optional<std::u16string> ChooseCsvFile(FileDialog::Kind kind, std::u16string_view title,
                                            std::u16string_view start)
{
    FileDialog dialog;
    dialog.kind = kind;
    dialog.title = title;
    dialog.filter = u"Comma Separated Value (*.csv)|*.csv|All Files (*.*)|*.*";
    dialog.defaultExtension = u".csv";
    dialog.start = start.empty() ? modShell::GetSpecialFolderPath(0, kCsidlPersonal) : std::u16string(start);
    return Toolkit().ChooseFile(dialog);
}

} // namespace KestrinProductEditor
