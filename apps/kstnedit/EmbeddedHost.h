// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/EmbeddedTrace.h"

#include <memory>
#include <optional>
#include <string>

namespace KestrinProductEditor::CommandLine {

struct HostOptions
{
    /// The folder of the catalogue; the user's own when there is none.
    std::optional<std::u16string> catalogueFolder;
    /// The file that the trace is appended to, in the platform's own bytes.
    std::optional<std::string> traceFile;
};

/// The host that the component runs in: a configuration that tells where the catalogue lies, and a trace.
///
/// Both are registered with the component as long as the host lives. The component keeps the first trace that
/// it gets on a thread: a second host on the same thread is not heard.
class EmbeddedHost
{
public:
    /// Throws CommandFailure when no folder is known or the trace's file cannot be opened.
    explicit EmbeddedHost(const HostOptions& options);
    EmbeddedHost(const EmbeddedHost&) = delete;
    EmbeddedHost& operator=(const EmbeddedHost&) = delete;
    ~EmbeddedHost();

    [[nodiscard]] const std::u16string& CatalogueFolder() const noexcept { return m_folder; }
    [[nodiscard]] const std::u16string& CataloguePath() const noexcept { return m_path; }
    /// Whether nobody named the folder: it is made on first use.
    [[nodiscard]] bool FolderIsOwn() const noexcept { return m_folderIsOwn; }
    [[nodiscard]] EmbeddedTrace& Trace() noexcept { return *m_trace; }

    /// The catalogue was saved: what fails from now on fails after the change.
    void NoteSave() noexcept { m_wasSaved = true; }
    [[nodiscard]] bool WasSaved() const noexcept { return m_wasSaved; }

private:
    std::u16string m_folder;
    std::u16string m_path;
    bool m_folderIsOwn;
    bool m_wasSaved = false;
    std::shared_ptr<EmbeddedTrace> m_trace = std::make_shared<EmbeddedTrace>();
};

} // namespace KestrinProductEditor::CommandLine
