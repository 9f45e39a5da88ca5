// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/EmbeddedHost.h"
#include "kstnedit/Paths.h"
#include "platform/Files.h"

#include <KestrinProductEditor/ProductLkpMgr.h>

#include <memory>
#include <string>
#include <string_view>

namespace KestrinProductEditor::CommandLine {

/// The catalogue, opened for one command.
///
/// Until Save nothing of it is written, whatever happens: a command that only reads, and one that fails,
/// leaves the file and the folder as they were.
class Catalogue
{
public:
    enum class Folder
    {
        MustExist,
        MayBeMissing ///< Save makes it
    };
    /// Whether a catalogue that is not there yet counts as an empty one.
    enum class File
    {
        MayBeMissing,
        MustExist
    };

    /// Opens the catalogue of the host; a missing one is empty. Errors: CommandFailure, and those of
    /// ProductLkpMgr::Create.
    Catalogue(EmbeddedHost& host, Folder folder, File file = File::MayBeMissing);
    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;
    /// Closes it without a change, unless Save was called.
    ~Catalogue();

    /// Requires: Save was not called.
    [[nodiscard]] ProductLkpMgr& Store() noexcept { return *m_store; }

    /// Makes the product with that identifier current. Throws CommandFailure when there is none.
    void GoToProduct(std::int32_t rowID);
    [[nodiscard]] bool HasProduct(std::int32_t rowID);

    /// Releases the store, which writes the file. Throws CommandFailure when it could not, or when another
    /// command has written the file since; the file on disk is as it was then.
    void Save();

private:
    /// The file services in use, but for the catalogue's own file, which stays as it is until it is released.
    class Guard final : public IFileSystem
    {
    public:
        explicit Guard(std::u16string path) : m_path(std::move(path)) {}
        void Release() noexcept { m_guards = false; }

        [[nodiscard]] std::u16string BuildPath(std::u16string_view folder,
                                               std::u16string_view name) const override;
        [[nodiscard]] bool FileExists(std::u16string_view path) const override;
        [[nodiscard]] std::unique_ptr<IReadStream> OpenForReading(std::u16string_view path) override;
        [[nodiscard]] std::unique_ptr<IWriteStream> CreateInPlace(std::u16string_view path) override;
        [[nodiscard]] std::unique_ptr<IWriteStream> ReplaceFile(std::u16string_view path) override;

    private:
        IFileSystem& m_below = FileSystem();
        std::u16string m_path;
        bool m_guards = true;
    };

    EmbeddedHost& m_host;
    FileStamp m_stamp; // of the file when it was opened
    Guard m_guard;
    ScopedFileSystem m_scope{m_guard};
    std::shared_ptr<ProductLkpMgr> m_store;
};

} // namespace KestrinProductEditor::CommandLine
