// SPDX-License-Identifier: MIT
#include "kstnedit/EmbeddedHost.h"

#include "kstnedit/Failure.h"
#include "kstnedit/Paths.h"
#include "kstnedit/Terminal.h"
#include "platform/FileKind.h"
#include "platform/Files.h"
#include "platform/HostServices.h"

#include <utility>

namespace KestrinProductEditor::CommandLine {

namespace {

constexpr std::u16string_view kCatalogueFileName = u"corvprd2.cpd";
constexpr std::u16string_view kFolderInUserData = u"Salvo/Database";

class EmbeddedConfig final : public IConfig
{
public:
    explicit EmbeddedConfig(std::u16string folder) : m_folder(std::move(folder)) {}

    Variant Value(std::u16string_view sKey) override
    {
        if (sKey == u"InstallPath")
            return m_folder;
        if (sKey == u"DBSubdirName")
            return u"";
        return {};
    }

private:
    std::u16string m_folder;
};

std::u16string OwnFolder()
{
    const std::optional<std::u16string> userData = UserDataFolder();
    if (!userData)
        throw CommandFailure("cannot tell where your catalogue lies: neither XDG_DATA_HOME nor HOME names a "
                             "folder. Name one with --catalogue DIR.");
    return FileSystem().BuildPath(*userData, kFolderInUserData);
}

} // namespace

EmbeddedHost::EmbeddedHost(const HostOptions& options)
    : m_folder(options.catalogueFolder ? *options.catalogueFolder : OwnFolder()),
      m_path(FileSystem().BuildPath(m_folder, kCatalogueFileName)), m_folderIsOwn(!options.catalogueFolder)
{
    if (options.traceFile) {
        const std::u16string traceFile = PathFromNative(*options.traceFile);
        if (AreSameFile(traceFile, m_path))
            throw CommandFailure("the trace would be written into the catalogue " + QuotedPath(m_path) +
                                 ". Name another file.");
        if (!m_trace->Open(*options.traceFile))
            throw CommandFailure("cannot open " + QuotedPath(traceFile) +
                                 " for the trace. Check that its folder exists and can be written to.");
    }
    RegisterHostComponent(kTraceClassID, [trace = m_trace] { return trace; });
    RegisterHostComponent(kConfigClassID,
                          [folder = m_folder] { return std::make_shared<EmbeddedConfig>(folder); });
}

EmbeddedHost::~EmbeddedHost()
{
    RegisterHostComponent(kTraceClassID, nullptr);
    RegisterHostComponent(kConfigClassID, nullptr);
}

} // namespace KestrinProductEditor::CommandLine
