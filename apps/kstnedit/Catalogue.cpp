// SPDX-License-Identifier: MIT
#include "kstnedit/Catalogue.h"

#include "kstnedit/Failure.h"
#include "kstnedit/Paths.h"

#include <utility>

namespace KestrinProductEditor::CommandLine {

namespace {

class DroppingStream final : public IWriteStream
{
public:
    void Write(std::string_view /*bytes*/) override {}
    void Close() override {}
};

} // namespace

std::u16string Catalogue::Guard::BuildPath(std::u16string_view folder, std::u16string_view name) const
{
    return m_below.BuildPath(folder, name);
}

bool Catalogue::Guard::FileExists(std::u16string_view path) const
{
    return m_below.FileExists(path);
}

std::unique_ptr<IReadStream> Catalogue::Guard::OpenForReading(std::u16string_view path)
{
    return m_below.OpenForReading(path);
}

std::unique_ptr<IWriteStream> Catalogue::Guard::CreateInPlace(std::u16string_view path)
{
    return m_below.CreateInPlace(path);
}

std::unique_ptr<IWriteStream> Catalogue::Guard::ReplaceFile(std::u16string_view path)
{
    if (m_guards && path == m_path)
        return std::make_unique<DroppingStream>();
    return m_below.ReplaceFile(path);
}

Catalogue::Catalogue(EmbeddedHost& host, Folder folder, File file)
    : m_host(host), m_stamp(StampOf(host.CataloguePath())), m_guard(host.CataloguePath())
{
    // Neither may pass for a catalogue that is not there yet.
    if (IsFolder(host.CataloguePath()))
        throw CommandFailure(QuotedPath(host.CataloguePath()) +
                             " is a folder, and no catalogue. Move it away, or name another folder.");
    if (IsDanglingLink(host.CataloguePath()))
        throw CommandFailure("the catalogue " + QuotedPath(host.CataloguePath()) +
                             " is a link to a file that does not exist. Mend the link, or remove it.");
    if (host.FolderIsOwn()) {
        CreateFolders(host.CatalogueFolder());
    } else if (MayExist(host.CatalogueFolder()) && !IsFolder(host.CatalogueFolder())) {
        throw CommandFailure(QuotedPath(host.CatalogueFolder()) +
                             " is no folder. Name the folder that holds the catalogue, or is to hold it.");
    } else if (folder == Folder::MustExist && !MayExist(host.CatalogueFolder())) {
        throw CommandFailure("the folder " + QuotedPath(host.CatalogueFolder()) +
                             " does not exist. Check the name for a typing error; 'add', 'import' and "
                             "'restore' begin a new catalogue.");
    }
    if (file == File::MustExist && !MayExist(host.CataloguePath()))
        throw CommandFailure("there is no catalogue in " + QuotedPath(host.CatalogueFolder()) +
                             " yet. 'add', 'import' and 'restore' begin one.");
    m_store = ProductLkpMgr::Create();
    m_store->CancelUpdate(true);
}

Catalogue::~Catalogue()
{
    // A restored store wants to be written; one that is given up is not.
    if (m_store)
        m_store->CancelUpdate(true);
}

bool Catalogue::HasProduct(std::int32_t rowID)
{
    if (m_store->Count() == 0)
        return false;
    m_store->FindRow(rowID);
    return !m_store->EOF();
}

void Catalogue::GoToProduct(std::int32_t rowID)
{
    if (!HasProduct(rowID))
        throw CommandFailure("no product has the row identifier " + std::to_string(rowID) +
                             ". 'kstnedit find' and 'kstnedit list' show the identifiers.");
}

void Catalogue::Save()
{
    if (StampOf(m_host.CataloguePath()) != m_stamp)
        throw CommandFailure(
            "another command has changed the catalogue meanwhile; nothing was saved. Run the "
            "command again.");
    if (!MayExist(m_host.CatalogueFolder()))
        CreateFolders(m_host.CatalogueFolder());
    m_guard.Release();
    m_store->CancelUpdate(false);
    m_store.reset();
    if (const auto& failure = m_host.Trace().ReleaseFailure())
        throw CommandFailure("the catalogue was not saved; it is as it was before: " +
                             TextOfFailure({}, failure->number, failure->text));
    m_host.NoteSave();
}

} // namespace KestrinProductEditor::CommandLine
