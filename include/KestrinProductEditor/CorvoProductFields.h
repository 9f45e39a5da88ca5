// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace KestrinProductEditor {

// On disk and in hosts' programs: never renumber.

/// The columns of a catalogue row: the index of ProductLkpMgr::Fields.
enum CorvoProductFields : std::int32_t
{
    PF_RowID = 0,
    PF_UniqueID = 1,
    PF_Status = 2,
    PF_Name = 3,
    PF_Key = 4,
    PF_PartNum = 5,
    PF_UnitPrice = 6,
    PF_Note = 7,
    PF_DirtySession = 8,
    PF_DirtySync = 9,
};

/// The largest number of characters (UTF-16 code units) in each text column.
enum CorvoProductFldSize : std::int32_t
{
    PFS_Name = 255,
    PFS_Key = 255,
    PFS_PartNum = 255,
    PFS_Note = 4095,
};

} // namespace KestrinProductEditor
