// SPDX-License-Identifier: MIT
#pragma once

// The whole public face, in the order of the type library.

#include <KestrinProductEditor/CorvoProductFields.h>
#include <KestrinProductEditor/CreateObject.h>
#include <KestrinProductEditor/HostComponents.h>
#include <KestrinProductEditor/IPNotifyCallback.h>
#include <KestrinProductEditor/IProcessProgress.h>
#include <KestrinProductEditor/ProdLkpEditDlg.h>
#include <KestrinProductEditor/ProductEditorDlg.h>
#include <KestrinProductEditor/ProductExportDlg.h>
#include <KestrinProductEditor/ProductImportDlg.h>
#include <KestrinProductEditor/ProductLkpMgr.h>
