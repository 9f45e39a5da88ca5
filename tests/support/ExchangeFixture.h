// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Text.h"
#include "support/StoreFixture.h"
#include "support/User.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// A user in front of the import or export dialog over a store with the products Anchor and Bolt.
class ExchangeFixture : public StoreFixture
{
protected:
    ExchangeFixture();
    ~ExchangeFixture() override;

    /// Opens the dialog, acts, and expects that the acts have closed it.
    void Import(const std::function<void()>& acts);
    void Export(const std::function<void()>& acts);

    /// Writes a file and browses to it.
    void BrowseTo(std::string_view name, std::string_view content);
    void BrowseTo(const std::u16string& path);
    /// The columns of the grid `flexGrid` that is in front, without its header.
    [[nodiscard]] std::vector<std::string> Column(std::int32_t col) const;
    [[nodiscard]] std::string Cell(std::int32_t row, std::int32_t col) const;
    [[nodiscard]] std::vector<std::string> Names() { return NamesOf(*m_store); }
    [[nodiscard]] static IUser::Message Exclamation(std::u16string_view text);
    [[nodiscard]] static IUser::Message Summary(int imported, int rejected);

    static const IUser::Message kNoFileName;
    static const IUser::Message kNoMapping;
    static const IUser::Message kNoSample;
    static const IUser::Message kNoPreview;
    static const IUser::Message kNoImport;

    std::unique_ptr<IUser> m_user = MakeUser();
    std::shared_ptr<ProductLkpMgr> m_store;
};

} // namespace KestrinProductEditor
