// SPDX-License-Identifier: MIT
#include "kstnedit/EditedCatalogue.h"

#include "frame/modResourceDefs.h"
#include "frame/modResourceUtils.h"
#include "kstnedit/Catalogue.h"
#include "kstnedit/Failure.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/ui/Toolkit.h"

namespace KestrinProductEditor::CommandLine {

namespace {

MessageAnswer Show(std::string_view text, std::int32_t style)
{
    return MessageBoxes().Show(ToUtf16(text), style,
                               modResourceUtils::GetResString(modResourceDefs::kApplicationTitle));
}

/// A path beside that of the catalogue at which there is nothing yet: "corvprd2 (2).cpd".
std::u16string FreePathBeside(const std::u16string& path)
{
    const std::size_t point = path.rfind(u'.');
    for (int number = 2;; ++number) {
        std::u16string candidate = path;
        candidate.insert(point, u" (" + ToUtf16(std::to_string(number)) + u")");
        if (!MayExist(candidate))
            return candidate;
    }
}

} // namespace

EditedCatalogue::EditedCatalogue(EmbeddedHost& host) : m_host(host)
{
    // Before it is read: what another program saves from here on is noticed.
    m_stamp = StampOf(host.CataloguePath());
    Catalogue look(host, Catalogue::Folder::MustExist);
    // Where no window can be shown no catalogue is begun.
    static_cast<void>(Toolkit());
    if (!m_stamp.exists) {
        look.Save();
        m_stamp = StampOf(host.CataloguePath());
    }
}

void EditedCatalogue::WarnWhenReadOnly() const
{
    try {
        static_cast<void>(FileSystem().ReplaceFile(m_host.CataloguePath()));
    } catch (const AutomationError& error) {
        Show(TextOfFailure("The catalogue cannot be saved here", error.Number(), error.what()) +
                 "\r\n\r\nYou can look at it, but changes will be lost.",
             kMessageExclamation);
    }
}

void EditedCatalogue::BeforeRelease(ProductLkpMgr& store)
{
    if (store.CancelUpdate())
        return;
    if (!store.SessionIsDirty()) {
        store.CancelUpdate(true);
        return;
    }
    const FileStamp stamp = StampOf(m_host.CataloguePath());
    if (stamp == m_stamp || !stamp.exists)
        return;
    if (Show("Another program has changed the catalogue since this window was opened.\r\n\r\n"
             "Replace it with what is in this window? No keeps both: yours is saved in a file of its own.",
             kMessageYesNo | kMessageSecondDefault) == MessageAnswer::Yes)
        return;
    store.CancelUpdate(true);
    PrvSaveBeside(store);
}

void EditedCatalogue::RequireSaved() const
{
    std::string what = m_failure;
    if (const auto& release = m_host.Trace().ReleaseFailure(); release && what.empty())
        what =
            TextOfFailure("catalogue was not saved; it is as it was before", release->number, release->text);
    if (what.empty())
        return;
    Show("The " + what, kMessageExclamation);
    throw CommandFailure("the " + what);
}

void EditedCatalogue::PrvSaveBeside(ProductLkpMgr& store)
{
    const std::u16string path = FreePathBeside(m_host.CataloguePath());
    try {
        store.BinaryProductExport(path);
    } catch (const AutomationError& error) {
        m_failure = TextOfFailure("catalogue of this window was not saved in " + QuotedPath(path),
                                  error.Number(), error.what());
        return;
    }
    Show("The catalogue of this window was saved in " + QuotedPath(path) + ".", kMessageInformation);
}

} // namespace KestrinProductEditor::CommandLine
