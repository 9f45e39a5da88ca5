// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtText.h"
#include "platform/ui/WindowMnemonics.h"

#include <QString>

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace KestrinProductEditor {

class QtMnemonics final : public WindowMnemonics
{
public:
    using ShowInQt = std::function<void(const QString& marked)>;

    [[nodiscard]] std::size_t Add(Rank rank, ShowInQt show)
    {
        return WindowMnemonics::Add(
            rank, [show = std::move(show)](const std::u16string& marked) { show(ToQt(marked)); });
    }
};

} // namespace KestrinProductEditor
