// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Files.h"

#include <KestrinProductEditor/AutomationError.h>

#include <cstdint>
#include <optional>

namespace KestrinProductEditor {

/// File services that pass everything on to others, and fail where they are told to.
///
/// A failure stays until Heal. The object outlives its streams.
class FailingFileSystem final : public IFileSystem
{
public:
    explicit FailingFileSystem(IFileSystem& below);

    /// Whatever is written from now on, by all streams together, beyond `count` bytes fails. The bytes before
    /// that are written, as on a disk that fills up.
    void FailAfterWriting(std::uint64_t count, std::int32_t number = kErrDiskFull);
    /// Whatever is read from now on beyond `count` bytes fails.
    void FailAfterReading(std::uint64_t count, std::int32_t number = kErrDeviceIO);
    /// OpenForReading, CreateInPlace and ReplaceFile fail.
    void FailAtOpening(std::int32_t number = kErrPermissionDenied);
    /// IWriteStream::Close fails without closing.
    void FailAtClosing(std::int32_t number = kErrDeviceIO);
    /// FileExists fails.
    void FailAtLooking(std::int32_t number = kErrPermissionDenied);
    void Heal();

    /// What was written and read since the object was made.
    [[nodiscard]] std::uint64_t BytesWritten() const noexcept { return m_written; }
    [[nodiscard]] std::uint64_t BytesRead() const noexcept { return m_read; }

    [[nodiscard]] std::u16string BuildPath(std::u16string_view folder,
                                           std::u16string_view name) const override;
    [[nodiscard]] bool FileExists(std::u16string_view path) const override;
    [[nodiscard]] std::unique_ptr<IReadStream> OpenForReading(std::u16string_view path) override;
    [[nodiscard]] std::unique_ptr<IWriteStream> CreateInPlace(std::u16string_view path) override;
    [[nodiscard]] std::unique_ptr<IWriteStream> ReplaceFile(std::u16string_view path) override;

private:
    class ReadStream;
    class WriteStream;

    struct Limit
    {
        std::uint64_t end;
        std::int32_t number;
    };

    IFileSystem& m_below;
    std::uint64_t m_written = 0;
    std::uint64_t m_read = 0;
    std::optional<Limit> m_writeLimit;
    std::optional<Limit> m_readLimit;
    std::int32_t m_openError = 0;
    std::int32_t m_closeError = 0;
    std::int32_t m_lookError = 0;
};

} // namespace KestrinProductEditor
