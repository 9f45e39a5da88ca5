// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace KestrinProductEditor {

[[nodiscard]] inline QString ToQt(std::u16string_view text)
{
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

[[nodiscard]] inline std::u16string FromQt(const QString& text)
{
    return text.toStdU16String();
}

} // namespace KestrinProductEditor
