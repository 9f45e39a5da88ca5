// SPDX-License-Identifier: MIT
#include "platform/ui/WindowMnemonics.h"

#include "platform/ui/Mnemonics.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] std::size_t FindLetter(std::u16string_view shown, char16_t letter)
{
    const auto* const found = std::find_if(shown.begin(), shown.end(), [letter](char16_t character) {
        return letter != 0 && MnemonicLetter(character) == letter;
    });
    return found == shown.end() ? kNoMnemonic : static_cast<std::size_t>(found - shown.begin());
}

} // namespace

std::size_t WindowMnemonics::Add(Rank rank, Show show)
{
    m_bearers.push_back(
        {.rank = rank, .show = std::move(show), .shown = {}, .letter = 0, .marked = std::nullopt});
    return m_bearers.size() - 1;
}

void WindowMnemonics::SetCaption(std::size_t bearer, std::u16string_view shown)
{
    Bearer& changed = m_bearers[bearer];
    changed.shown = shown;
    const std::size_t place = FindLetter(shown, changed.letter);
    if (place != kNoMnemonic)
        PrvShow(changed, place);
    else
        PrvChooseAll();
}

void WindowMnemonics::PrvShow(Bearer& bearer, std::size_t place)
{
    // What stays as it is is not painted anew.
    std::u16string marked = MarkMnemonic(bearer.shown, place);
    if (marked == bearer.marked)
        return;
    bearer.marked = std::move(marked);
    bearer.show(*bearer.marked);
}

void WindowMnemonics::PrvChooseAll()
{
    std::vector<std::size_t> order(m_bearers.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](std::size_t left, std::size_t right) {
        return m_bearers[left].rank < m_bearers[right].rank;
    });
    std::vector<std::u16string> captions;
    captions.reserve(order.size());
    for (const std::size_t bearer : order)
        captions.push_back(m_bearers[bearer].shown);
    const std::vector<std::size_t> places = ChooseMnemonics(captions);
    for (std::size_t at = 0; at < order.size(); ++at) {
        Bearer& bearer = m_bearers[order[at]];
        bearer.letter = places[at] == kNoMnemonic ? char16_t{0} : MnemonicLetter(bearer.shown[places[at]]);
        PrvShow(bearer, places[at]);
    }
}

} // namespace KestrinProductEditor
