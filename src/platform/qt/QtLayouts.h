// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QWidget>

#include <string_view>

namespace KestrinProductEditor {

// Put the layout with that name onto an empty widget, which takes the name, too. False when there is none.

[[nodiscard]] bool SetUpForm(std::u16string_view name, QDialog& window);
[[nodiscard]] bool SetUpUserControl(std::u16string_view name, QWidget& surface);

} // namespace KestrinProductEditor
