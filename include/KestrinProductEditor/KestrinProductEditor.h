// SPDX-License-Identifier: MIT
#pragma once

// The whole public face but for what needs a toolkit's headers (QtViews.h).

#include <KestrinProductEditor/CorvoProductFields.h>
#include <KestrinProductEditor/CreateObject.h>
#include <KestrinProductEditor/HostComponents.h>
#include <KestrinProductEditor/IPNotifyCallback.h>
#include <KestrinProductEditor/IProcessProgress.h>
#include <KestrinProductEditor/ProdLkpEditDlg.h>
#include <KestrinProductEditor/ProductDetails.h>
#include <KestrinProductEditor/ProductEditorDlg.h>
#include <KestrinProductEditor/ProductExportDlg.h>
#include <KestrinProductEditor/ProductImportDlg.h>
#include <KestrinProductEditor/ProductLkpMgr.h>
#include <KestrinProductEditor/ProductLkpView.h>
