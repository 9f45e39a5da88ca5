// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// The underlined letters of a window. They stay as they are while the captions that they stand in keep them,
/// and are chosen anew for the whole window when one does not (Mnemonics.h chooses).
class WindowMnemonics
{
public:
    /// Where captions compete, the earlier kind has the better letter.
    enum class Rank
    {
        Menu,
        Button,
        Label,
    };
    /// Shows a caption whose letter is marked with "&", and "&&" for each "&". Called when it changes.
    using Show = std::function<void(const std::u16string& marked)>;

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
        std::optional<std::u16string> marked; ///< as it was shown last
    };

    static void PrvShow(Bearer& bearer, std::size_t place);
    void PrvChooseAll();

    std::vector<Bearer> m_bearers;
};

} // namespace KestrinProductEditor
