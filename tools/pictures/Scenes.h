// SPDX-License-Identifier: MIT
#pragma once

#include "Camera.h"
#include "Look.h"
#include "PictureHost.h"
#include "Stage.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace KestrinProductEditor {

/// The windows of the component as a person sees them on the way through a price list. Everything throws
/// std::runtime_error for a window that does not show what it should.
class Scenes
{
public:
    Scenes(const QByteArray& priceList, const QString& folder);

    /// Five pictures: the list, an edit, an import and its preview, an export.
    void PlayRoad();
    /// Every window in every look. `scale` is for the names of the pictures.
    void PlayAll(int scale);

private:
    void PrvPlayLook(Theme theme, int scale);
    void PrvPlayMirrored(int scale);

    void PrvEdit(const Stage::Act& act);
    void PrvImport(const Stage::Act& act);
    void PrvExport(const Stage::Act& act);

    void PrvTakeAtEverySize(QWidget& window, const QString& name);
    void PrvShowEditor(QWidget& window, const QString& look);
    void PrvShowImport(QWidget& window, const QString& look);
    void PrvShowExport(QWidget& window, const QString& look);
    void PrvMapColumns(QWidget& window, const QString& priceList);

    Camera m_camera;
    PictureHost m_host;
    Stage m_stage;
};

} // namespace KestrinProductEditor
