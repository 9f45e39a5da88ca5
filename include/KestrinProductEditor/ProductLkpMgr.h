// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationError.h>
#include <KestrinProductEditor/AutomationObject.h>
#include <KestrinProductEditor/CorvoProductFields.h>
#include <KestrinProductEditor/IProcessProgress.h>
#include <KestrinProductEditor/Variant.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string_view>

// ProductLkpMgr::EOF bears the name of a macro of <cstdio>. The constant below has the macro's value and
// serves every use of it but the preprocessor's own. Include this header behind those of C libraries: one
// that finds no macro may define it anew, and has to be followed by another #undef EOF.
#ifdef EOF
#undef EOF
inline constexpr int EOF = -1;
#endif

namespace KestrinProductEditor {

class ProductRows;

/// The catalogue store: one table of products, loaded whole from the catalogue file when the store is created
/// and written back whole when it is released.
///
/// **The file** is "corvprd2.cpd" in the folder joined from the host's configuration values "InstallPath" and
/// "DBSubdirName"; a missing one is created empty. Every change stays in memory until the last reference to
/// the store goes: then rows without a name are removed and the file is replaced, at every moment the old
/// catalogue or the new one. A store that only reads should set CancelUpdate, else its release writes what it
/// loaded over what another store may have saved meanwhile. A failure of that save cannot be raised; the
/// host's trace hears of it (context "KestrinProductMgr.ProductLkpMgr::Class_Terminate").
///
/// **The cursor.** One row is current, or the cursor stands before the first row (BOF) or after the last
/// (EOF). Rows are visited in name order: Unicode simple case folding, by code point, ties in order of
/// arrival. The order is kept: a new row takes its place at once, a renamed one at Update or when the cursor
/// leaves it, and stays current; MoveNext and MovePrevious go on from the place that the row had when it
/// became current. A deleted row stays current until the cursor moves; MoveNext then goes to the row that
/// followed it. Creation leaves the cursor after the last row.
///
/// **Products** cross in packed form: a one-dimensional array of six elements, 0 the row identifier (Long),
/// 1 `Name`, 2 `Key`, 3 `PartNum` (String), 4 `UnitPrice` (Currency), 5 `Note` (String).
///
/// **Errors.** Any member that is traced raises AutomationError. Beside the errors that its comment names: 13
/// or 9 for a `vParams` or packed product that is no array, too short or of the wrong kind (nothing is
/// changed), 3021 without a current row, 3265 for a column that does not exist, -2147217887 for a text longer
/// than its column, 6 and 13 from conversions, 7 when memory runs out.
class [[gnu::visibility("default")]] ProductLkpMgr final : public AutomationObject
{
public:
    /// Opens the catalogue and returns a store over it. Errors: 429 when a host component cannot be created,
    /// 321 when the file is no catalogue (the description says at which byte and why; the file stays as it
    /// is), 70, 75, 76, 57 from the file services.
    [[nodiscard]] static std::shared_ptr<ProductLkpMgr> Create();

    /// Removes rows without a name and writes the file, unless CancelUpdate is true. Never throws.
    ~ProductLkpMgr() override;

    /// When true, the release of the store does not write the file. BinaryProductImport makes it false.
    void CancelUpdate(bool bCancel) noexcept;
    [[nodiscard]] bool CancelUpdate() const noexcept;

    /// Makes the row `lIdx` rows after the first one current (0 is the first). Beyond the end: EOF; negative:
    /// BOF; error 3021 on an empty table. Not traced.
    void GotoNthProduct(std::int32_t lIdx);

    /// The rows whose part number begins with `sPartNum`, letter case aside, in row order; with `bAll` every
    /// row. A two-dimensional array (column, row): column 0 `RowID`, column 1 `PartNum`. Null when nothing
    /// matches, when the text is empty and `bAll` false, when the text holds "'", and after any failure. The
    /// cursor does not move. Never raises.
    [[nodiscard]] Variant GetFindMatchesByPartNum(std::u16string_view sPartNum, bool bAll);
    /// As GetFindMatchesByPartNum, for names: column 1 is `Name`.
    [[nodiscard]] Variant GetFindMatchesByName(std::u16string_view sName, bool bAll);
    /// Always false.
    [[nodiscard]] bool PartialFindByName(std::u16string_view sName) noexcept;

    /// Writes the packed product over the row with its row identifier, marks the row dirty for session and
    /// synchronisation, and makes it current in its place. Error "Product not found" when no row has the
    /// identifier; nothing is added or changed then.
    void Update(const Variant& vProductInfo);
    /// The packed product of the row `lRowID`, which becomes current. Error "Product not found".
    [[nodiscard]] Variant Pack(std::int32_t lRowID);

    /// Writes the whole catalogue, in the form of the catalogue file, over whatever `sTargetPath` held.
    void BinaryProductExport(std::u16string_view sTargetPath);

    /// Adds one product from the columns of one line. `vColumns`: an array of texts; `vRevMap`: an array of
    /// four Longs, the column of name, part number, price and note, negative for none. `bError` tells whether
    /// it failed; nothing is added then. Never raises.
    void PrvCSVSetRowFields(Variant & vColumns, Variant & vRevMap, bool& bError);

    /// Registers the one receiver that imports and exports report to, in place of an earlier one. The store
    /// holds it until ClearNotifyCallback: a receiver that holds the store in its turn keeps both alive, and
    /// nothing is saved.
    void SetNotifyCallback(std::shared_ptr<IProcessProgress> objIProgress) noexcept;
    void ClearNotifyCallback() noexcept;

    /// Writes the catalogue as comma-separated text. `vParams`: an array whose element 0 is the path. The
    /// header line is "Name","PartNum","UnitPrice","Note"; then a line for each row in row order, every value
    /// in quotes, line breaks as ";", double quotes as "'", prices in the locale's form with two decimals.
    /// The cursor stands after the last row then. Lines written before a failure stay in the file. Error 75,
    /// and nothing is written, for a path that leads to the catalogue file itself.
    void CSVProductExport(const Variant& vParams);

    /// Reads comma-separated text. `vParams`: an array of 0 the path, 1 the map (four Longs: the columns of
    /// name, part number, price and note from 0, negative for none), 2 the number 1 when the first line holds
    /// titles, 3 the number 1 when products are added to those present (else the store is emptied first).
    ///
    /// Returns an array of 0 the status (0, or the number of the error that ended the import), 1 its
    /// description, 2 the number of products imported, 3 the number of lines rejected. Never raises.
    /// Afterwards every row is due for synchronisation (`UniqueID` and `Status` 0, both dirty marks set) and
    /// the cursor stands after the last row. A refused `vParams` changes nothing; products added before
    /// another failure stay.
    [[nodiscard]] Variant CSVProductImport(const Variant& vParams);

    /// Replaces the catalogue with that of a file written by BinaryProductExport, every row due for
    /// synchronisation. Errors: "The path specified does not exist.", or 321 for a file that is none; the
    /// rows are unchanged then. CancelUpdate becomes false and the session dirty once the file was found,
    /// also when it turns out to be none.
    void BinaryProductImport(std::u16string_view sPath);

    /// Whether anything was changed through this store.
    [[nodiscard]] bool SessionIsDirty() const noexcept;

    /// Write `bDirty` into `DirtySync` (`DirtySession`) of the current row and all rows after it; the cursor
    /// stands after the last row then. Call MoveFirst before to reach every row.
    void SetDirtySyncFlags(bool bDirty);
    void SetDirtySessionFlags(bool bDirty);

    /// The number of rows.
    [[nodiscard]] std::int32_t Count();

    /// Column `lIdx` (CorvoProductFields) of the current row: Long, String, Currency or Boolean.
    [[nodiscard]] Variant Fields(std::int32_t lIdx);
    /// Writes column `lIdx` of the current row. In the columns 3 to 7 a value that differs, as text, from
    /// what stands there marks the row and the session dirty, and an equal one (or Null) writes nothing; the
    /// other columns are written without marking anything.
    void Fields(std::int32_t lIdx, const Variant& vValue);

    /// Adds a row from a packed product (element 0 is ignored) or, for Null, an empty one, and makes it
    /// current. Returns its `RowID`: the last one plus 1. Error 6 when that does not fit; no row is added
    /// then.
    std::int32_t AddNew(const Variant& vProdInfo);
    /// Deletes the row `lRowID`. Error 3021 when no row has it.
    void Delete(std::int32_t lRowID);
    void DeleteAll();

    /// Whether the cursor stands before the first row (after the last). Both on an empty table.
    [[nodiscard]] bool BOF();
    [[nodiscard]] bool EOF();
    /// Error 3021 on an empty table.
    void MoveLast();
    void MoveFirst();

    /// Makes the first row in row order whose `UniqueID` is `lRowSyncID` current; without one the cursor
    /// stands after the last row. Does nothing on an empty table.
    void FindRowBySyncID(std::int32_t lRowSyncID);

    /// The position of the current row, from 1; -1 unknown (an empty table, a deleted row), -2 before the
    /// first row, -3 after the last. Never raises.
    [[nodiscard]] std::int32_t CurrentRecordIdx();

    /// As FindRowBySyncID, by `RowID`.
    void FindRow(std::int32_t lRowID);

    /// Error 3021 when the cursor stands at that end already.
    void MoveNext();
    void MovePrevious();

private:
    friend class ProductRows;

    ProductLkpMgr();

    class [[gnu::visibility("hidden")]] Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace KestrinProductEditor
