// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/EmbeddedHost.h"
#include "kstnedit/Paths.h"

#include <KestrinProductEditor/ProductLkpMgr.h>

#include <string>

namespace KestrinProductEditor::CommandLine {

/// The catalogue while it is edited in a window.
///
/// A store writes what it holds when it goes, whatever the file has become since. Here the file may not be
/// written for nothing, nor over what another program has saved, unless the user says so.
class EditedCatalogue
{
public:
    /// Looks whether the catalogue can be opened, and begins one where there is none, so that the window need
    /// not. Throws CommandFailure and what ProductLkpMgr::Create raises.
    explicit EditedCatalogue(EmbeddedHost& host);

    /// Says in a message that nothing can be saved, when that is so.
    void WarnWhenReadOnly() const;

    /// Decides what the release of the closed window's store writes. An unchanged catalogue is not written.
    /// Where another program has saved meanwhile the user is asked; without his consent the window's
    /// catalogue goes into a file beside the other one, and a message names it.
    void BeforeRelease(ProductLkpMgr& store);

    /// To be called when the store is released. Throws CommandFailure, after a message that says the same,
    /// when the changes were not saved.
    void RequireSaved() const;

private:
    void PrvSaveBeside(ProductLkpMgr& store);

    EmbeddedHost& m_host;
    FileStamp m_stamp;     // of the file that the window shows
    std::string m_failure; // to save beside it, as RequireSaved tells it; empty for none
};

} // namespace KestrinProductEditor::CommandLine
