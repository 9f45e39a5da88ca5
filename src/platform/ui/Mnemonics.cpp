// SPDX-License-Identifier: MIT
#include "platform/ui/Mnemonics.h"

#include <algorithm>
#include <array>
#include <limits>

namespace KestrinProductEditor {

namespace {

constexpr std::size_t kLetters = 36;

// What a letter costs its caption; the least sum wins.
constexpr int kInitial = 0;
constexpr int kWordStart = 2;
constexpr int kInside = 5;
constexpr int kDigit = 20;
// Dearer than every choice that serves all captions.
constexpr int kNone = 1'000'000;

struct Choice
{
    int cost = kNone;
    std::size_t place = kNoMnemonic;
};
/// What each letter would be for one caption.
using Choices = std::array<Choice, kLetters>;

[[nodiscard]] std::size_t IndexOf(char16_t letter)
{
    return letter <= u'9' ? static_cast<std::size_t>(letter - u'0')
                          : static_cast<std::size_t>(letter - u'a') + 10;
}

[[nodiscard]] Choices ChoicesOf(std::u16string_view shown)
{
    Choices choices;
    bool isFirst = true;
    for (std::size_t place = 0; place < shown.size(); ++place) {
        const char16_t letter = MnemonicLetter(shown[place]);
        if (letter == 0)
            continue;
        const bool beginsWord = place == 0 || MnemonicLetter(shown[place - 1]) == 0;
        // Among others the one that is read first.
        int cost = kInside + static_cast<int>(std::min<std::size_t>(place, 9));
        if (letter <= u'9')
            cost = kDigit;
        else if (isFirst)
            cost = kInitial;
        else if (beginsWord)
            cost = kWordStart;
        isFirst = false;
        Choice& choice = choices[IndexOf(letter)];
        if (cost < choice.cost)
            choice = {.cost = cost, .place = place};
    }
    return choices;
}

/// The assignment of least cost (the Hungarian method): answers the column of each row, all different.
/// Requires: at least as many columns as rows.
[[nodiscard]] std::vector<std::size_t> Assign(const std::vector<std::vector<long>>& costs)
{
    const std::size_t rows = costs.size();
    const std::size_t columns = costs.front().size();
    // Counted from 1; row and column 0 stand for "none".
    std::vector<long> rowPotential(rows + 1);
    std::vector<long> columnPotential(columns + 1);
    std::vector<std::size_t> rowOf(columns + 1);
    std::vector<std::size_t> cameFrom(columns + 1);
    for (std::size_t newRow = 1; newRow <= rows; ++newRow) {
        rowOf[0] = newRow;
        std::size_t column = 0;
        std::vector<long> slack(columns + 1, std::numeric_limits<long>::max());
        std::vector<bool> isVisited(columns + 1);
        do {
            isVisited[column] = true;
            const std::size_t row = rowOf[column];
            long step = std::numeric_limits<long>::max();
            std::size_t next = 0;
            for (std::size_t other = 1; other <= columns; ++other) {
                if (isVisited[other])
                    continue;
                const long reduced = costs[row - 1][other - 1] - rowPotential[row] - columnPotential[other];
                if (reduced < slack[other]) {
                    slack[other] = reduced;
                    cameFrom[other] = column;
                }
                if (slack[other] < step) {
                    step = slack[other];
                    next = other;
                }
            }
            for (std::size_t other = 0; other <= columns; ++other) {
                if (isVisited[other]) {
                    rowPotential[rowOf[other]] += step;
                    columnPotential[other] -= step;
                } else {
                    slack[other] -= step;
                }
            }
            column = next;
        } while (rowOf[column] != 0);
        while (column != 0) {
            rowOf[column] = rowOf[cameFrom[column]];
            column = cameFrom[column];
        }
    }
    std::vector<std::size_t> columnOf(rows);
    for (std::size_t column = 1; column <= columns; ++column) {
        if (rowOf[column] != 0)
            columnOf[rowOf[column] - 1] = column - 1;
    }
    return columnOf;
}

} // namespace

char16_t MnemonicLetter(char16_t character) noexcept
{
    if (character >= u'A' && character <= u'Z')
        return static_cast<char16_t>(character - u'A' + u'a');
    const bool isLetter =
        (character >= u'a' && character <= u'z') || (character >= u'0' && character <= u'9');
    return isLetter ? character : char16_t{0};
}

std::u16string ShownCaption(std::u16string_view caption)
{
    std::u16string shown;
    for (std::size_t place = 0; place < caption.size(); ++place) {
        if (caption[place] == u'&' && (++place == caption.size() || caption[place] != u'&')) {
            --place;
            continue;
        }
        shown += caption[place];
    }
    return shown;
}

std::vector<std::size_t> ChooseMnemonics(std::span<const std::u16string> shown)
{
    if (shown.empty())
        return {};
    std::vector<Choices> choices;
    std::vector<std::vector<long>> costs;
    for (std::size_t row = 0; row < shown.size(); ++row) {
        choices.push_back(ChoicesOf(shown[row]));
        // A last column for each caption that may stay without a letter.
        std::vector<long> rowCosts(kLetters + shown.size(), kNone);
        const auto weight = static_cast<long>(2 * shown.size() - row);
        for (std::size_t letter = 0; letter < kLetters; ++letter) {
            const Choice& choice = choices.back()[letter];
            if (choice.place != kNoMnemonic)
                rowCosts[letter] = choice.cost * weight;
        }
        costs.push_back(std::move(rowCosts));
    }
    const std::vector<std::size_t> letters = Assign(costs);
    std::vector<std::size_t> places;
    for (std::size_t row = 0; row < shown.size(); ++row)
        places.push_back(letters[row] < kLetters ? choices[row][letters[row]].place : kNoMnemonic);
    return places;
}

std::u16string MarkMnemonic(std::u16string_view shown, std::size_t place)
{
    std::u16string marked;
    for (std::size_t at = 0; at < shown.size(); ++at) {
        if (at == place || shown[at] == u'&')
            marked += u'&';
        marked += shown[at];
    }
    return marked;
}

} // namespace KestrinProductEditor
