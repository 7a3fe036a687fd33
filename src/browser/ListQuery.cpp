#include "browser/ListQuery.h"

#include "app/MainModule.h"
#include "browser/ListFaults.h"
#include "browser/ListRecord.h"
#include "platform/RuntimeError.h"

#include <utility>

namespace quavernet {

ListRows::ListRows() : m_data(std::make_shared<ListData>()) {}

ListRows::ListRows(std::shared_ptr<const ListData> data) : m_data(std::move(data)) {}

std::string ListRows::Text(std::size_t row, ListColumn column) const {
    if (row < 1 || row > Count()) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument");
    }
    const auto field = [&](std::size_t position) {
        return m_data->Block.At(m_data->Listed[row - 1], position);
    };
    // What can't be shown since before the start is an empty cell.
    const auto shown = [&](const auto& make) {
        std::string text;
        PassListFault(field(ListField::FileId), [&] { text = make(); });
        return text;
    };
    switch (column) {
    case ListColumn::Interpret:
        return field(ListField::Interpret).Text();
    case ListColumn::Title:
        return field(ListField::Title).Text();
    case ListColumn::Length:
        return shown([&] { return LengthText(field(ListField::Length), services.regional); });
    case ListColumn::Size:
        return shown([&] { return SizeText(field(ListField::SizeInBytes), services.regional) + " MB"; });
    case ListColumn::Quality:
        return field(ListField::Quality).Text();
    case ListColumn::Format:
        break;
    }
    return field(ListField::Extension).Text();
}

std::int64_t ListRows::RowData(std::size_t row) const {
    if (row < 1 || row > Count()) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument");
    }
    return m_data->Block.At(m_data->Listed[row - 1], ListField::FileId).Integer();
}

} // namespace quavernet
