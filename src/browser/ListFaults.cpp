#include "browser/ListFaults.h"

#include "app/LoadResString.h"
#include "app/TextNumbers.h"
#include "browser/ListRecord.h"

#include <limits>

namespace quavernet {

namespace {

/// Where a result has what a fault is told by.
struct FaultColumns {
    std::size_t id;
    std::size_t name;
    std::size_t size;
    std::size_t length;
};

constexpr std::int64_t LowestLength = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t HighestLength = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t HighestSize = std::int64_t{1} << 40;

// Whether the engine would find the value outside of the two: texts are above all numbers there.
bool IsOutside(const ADODB::Field& field, std::int64_t lowest, std::int64_t highest) {
    switch (field.GetKind()) {
    case ADODB::Field::Kind::Integer:
        return field.Integer() < lowest || field.Integer() > highest;
    case ADODB::Field::Kind::Real:
        return field.Number() < static_cast<double>(lowest) || field.Number() > static_cast<double>(highest);
    default:
        return true;
    }
}

void NoteFaultsOfRow(const ADODB::RowBlock& files, std::size_t row, const FaultColumns& columns) {
    const auto note = [&](const auto& step) {
        try {
            step();
        } catch (const RuntimeError& failure) {
            mainModule.ListFaults.Note(ListFaultKey(files.At(row, columns.id)),
                                       files.At(row, columns.name).Text(), failure);
        }
    };
    note([&] { MegabyteSum(services.regional).Add(files.At(row, columns.size)); });
    note([&] { CheckLength(files.At(row, columns.length)); });
}

} // namespace

// Both ways look at all rows that can fail, and a few more: the same procedures as in a load decide.
void FindListFaults() {
    const ADODB::RowBlock files = mainModule.Connection->Query(
        "Select File_id, Name, SizeInBytes, Length from Files where Length is null or SizeInBytes is null"
        " or Length < -2147483648 or Length > 2147483647"
        " or SizeInBytes < 0 or SizeInBytes > 1099511627776");
    for (std::size_t row = 0; row < files.Rows(); ++row) {
        NoteFaultsOfRow(files, row, {.id = 0, .name = 1, .size = 2, .length = 3});
    }
    mainModule.ListFaultsDue = false;
}

void NoteListFaults(const ADODB::RowBlock& rows, std::int64_t allFiles) {
    if (!mainModule.ListFaultsDue) {
        return;
    }
    // A file that a filter or a missing lookup row keeps from the list can have a fault as well.
    if (static_cast<std::int64_t>(rows.Rows()) != allFiles) {
        FindListFaults();
        return;
    }
    for (std::size_t row = 0; row < rows.Rows(); ++row) {
        if (IsOutside(rows.At(row, ListField::SizeInBytes), 0, HighestSize) ||
            IsOutside(rows.At(row, ListField::Length), LowestLength, HighestLength)) {
            NoteFaultsOfRow(rows, row,
                            {.id = ListField::FileId,
                             .name = ListField::Name,
                             .size = ListField::SizeInBytes,
                             .length = ListField::Length});
        }
    }
    mainModule.ListFaultsDue = false;
}

std::string ListFaultsText() {
    return mainModule.ListFaults.Text(LoadResString(Texts::ListFaults));
}

} // namespace quavernet
