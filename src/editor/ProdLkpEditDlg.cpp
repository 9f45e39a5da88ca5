// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProdLkpEditDlg.h>

#include "frame/modInit.h"

namespace KestrinProductEditor {

std::shared_ptr<ProdLkpEditDlg> ProdLkpEditDlg::Create()
{
    modInit::EnsureMain();
    return std::shared_ptr<ProdLkpEditDlg>(new ProdLkpEditDlg);
}

ProdLkpEditDlg::~ProdLkpEditDlg() = default;

void ProdLkpEditDlg::Show(const Variant& /*vParams*/) noexcept {}

} // namespace KestrinProductEditor
