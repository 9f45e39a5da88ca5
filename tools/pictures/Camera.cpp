// SPDX-License-Identifier: MIT
#include "Camera.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>

#include <stdexcept>

namespace KestrinProductEditor {

namespace {

/// What was asked for before is laid out and painted then.
void Settle(QWidget& window)
{
    QApplication::sendPostedEvents();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    window.ensurePolished();
}

} // namespace

Camera::Camera(const QString& folder) : m_folder(folder)
{
    if (!m_folder.mkpath(QStringLiteral(".")))
        throw std::runtime_error("cannot make the folder " + folder.toStdString());
}

void Camera::Take(QWidget& window, const QString& name) const
{
    Settle(window);
    QPixmap picture = window.grab();
    if (picture.isNull() || !window.isVisible())
        throw std::runtime_error("there is nothing to see of " + name.toStdString());
    QPainter painter(&picture);
    for (QWidget* const popup : QApplication::topLevelWidgets()) {
        if (popup->windowType() == Qt::Popup && popup->isVisible())
            painter.drawPixmap(popup->mapToGlobal(QPoint()) - window.mapToGlobal(QPoint()), popup->grab());
    }
    painter.end();
    const QString path = m_folder.filePath(name + QStringLiteral(".png"));
    if (!picture.save(path))
        throw std::runtime_error("cannot write " + path.toStdString());
}

void Camera::TakeAt(QWidget& window, QSize size, const QString& name) const
{
    const QSize before = window.size();
    window.resize(size.expandedTo(window.minimumSizeHint()));
    Take(window, name);
    window.resize(before);
}

} // namespace KestrinProductEditor
