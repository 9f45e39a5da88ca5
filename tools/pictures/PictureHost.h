// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Settings.h"

#include <QString>
#include <QTemporaryDir>

namespace KestrinProductEditor {

/// The host of the windows that are pictured: a catalogue in a folder of its own, no trace, and the settings
/// of a person who never changed one.
///
/// The folder is the process's current one: the pictures shall not tell of this machine.
class PictureHost
{
public:
    /// Throws std::runtime_error when the folder cannot be made.
    PictureHost();
    PictureHost(const PictureHost&) = delete;
    PictureHost& operator=(const PictureHost&) = delete;
    ~PictureHost();

    /// Makes the catalogue that of the price list (the columns name, part number, price and note behind a
    /// line of titles). Throws std::runtime_error when not every line becomes a product.
    void FillCatalogue(const QString& priceList) const;
    /// Makes the catalogue's file one that cannot be opened.
    void SpoilCatalogue() const;
    void WriteFile(const QString& name, const QByteArray& content) const;

private:
    class Unchanged final : public ISettings
    {
    public:
        [[nodiscard]] std::u16string GetSetting(std::u16string_view application, std::u16string_view section,
                                                std::u16string_view key,
                                                std::u16string_view defaultValue) const override;
        void SaveSetting(std::u16string_view application, std::u16string_view section,
                         std::u16string_view key, std::u16string_view value) override;
    };

    QTemporaryDir m_folder;
    Unchanged m_unchanged;
    ScopedSettings m_settings{m_unchanged};
};

} // namespace KestrinProductEditor
