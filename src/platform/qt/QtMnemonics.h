// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// The underlined letters of a window. They stay as they are while the captions that they stand in keep them,
/// and are chosen anew for the whole window when one does not.
class QtMnemonics
{
public:
    /// Where captions compete, the earlier kind has the better letter.
    enum class Rank
    {
        Menu,
        Button,
        Label,
    };
    /// Shows a caption whose letter is marked for Qt.
    using Show = std::function<void(const QString& marked)>;

    /// A new bearer of a letter, without a caption yet.
    [[nodiscard]] std::size_t Add(Rank rank, Show show);
    /// `shown` is the caption as it is read.
    void SetCaption(std::size_t bearer, std::u16string_view shown);

private:
    struct Bearer
    {
        Rank rank;
        Show show;
        std::u16string shown;
        char16_t letter;
    };

    void PrvChooseAll();

    std::vector<Bearer> m_bearers;
};

} // namespace KestrinProductEditor
