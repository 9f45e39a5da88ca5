// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

// The letters of a window that are underlined, and reach their controls together with Alt.

/// The place of a caption that got no letter.
inline constexpr std::size_t kNoMnemonic = std::u16string_view::npos;

/// A caption as it is read: "&&" is "&", and a single "&" is nothing.
[[nodiscard]] std::u16string ShownCaption(std::u16string_view caption);

/// Chooses a letter or digit (of ASCII) in each caption, no two alike, letter case aside. Answers its place
/// in each, kNoMnemonic only where no choice serves them all. Initials are best, then the first letters of
/// later words, other letters, digits; where captions compete the earlier one has the better letter. The
/// same captions always give the same letters.
[[nodiscard]] std::vector<std::size_t> ChooseMnemonics(std::span<const std::u16string> shown);

/// The caption with "&" in front of the letter at `place`, and "&&" for each "&" that is shown.
[[nodiscard]] std::u16string MarkMnemonic(std::u16string_view shown, std::size_t place);

/// The letter or digit, small; 0 for every other character.
[[nodiscard]] char16_t MnemonicLetter(char16_t character) noexcept;

} // namespace KestrinProductEditor
