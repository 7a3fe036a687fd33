#include "browser/ListFaults.h"

#include "app/LoadResString.h"
#include "app/TextNumbers.h"
#include "browser/ListRecord.h"

namespace quavernet {

namespace {

/// Columns of the statement below.
enum : std::size_t { FaultId, FaultName, FaultSize, FaultLength };

template <typename Step> void NoteFailure(const ADODB::RowBlock& files, std::size_t row, Step&& step) {
    try {
        step(files.At(row, FaultSize), files.At(row, FaultLength));
    } catch (const RuntimeError& failure) {
        mainModule.ListFaults.Note(ListFaultKey(files.At(row, FaultId)), files.At(row, FaultName).Text(),
                                   failure);
    }
}

} // namespace

void FindListFaults() {
    // All that can fail, and a little more: the same procedures as in a load decide. Texts are above all
    // numbers here.
    const ADODB::RowBlock files = mainModule.Connection->Query(
        "Select File_id, Name, SizeInBytes, Length from Files where Length is null or SizeInBytes is null"
        " or Length < -2147483648 or Length > 2147483647"
        " or SizeInBytes < 0 or SizeInBytes > 1099511627776");
    for (std::size_t row = 0; row < files.Rows(); ++row) {
        NoteFailure(files, row, [](const ADODB::Field& size, const ADODB::Field&) {
            MegabyteSum(services.regional).Add(size);
        });
        NoteFailure(files, row, [](const ADODB::Field&, const ADODB::Field& length) { CheckLength(length); });
    }
}

std::string ListFaultsText() {
    return mainModule.ListFaults.Text(LoadResString(Texts::ListFaults));
}

} // namespace quavernet
