// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QSize>
#include <QString>
#include <QWidget>

namespace KestrinProductEditor {

/// Takes pictures of windows, together with the lists and menus that are open over them.
class Camera
{
public:
    /// Throws std::runtime_error when the folder cannot be made.
    explicit Camera(const QString& folder);

    /// Writes NAME.png. Throws std::runtime_error when there is nothing to see or nothing can be written.
    void Take(QWidget& window, const QString& name) const;
    /// The same at that size, or at the window's smallest where that is more; the window keeps its own.
    void TakeAt(QWidget& window, QSize size, const QString& name) const;

private:
    QDir m_folder;
};

} // namespace KestrinProductEditor
