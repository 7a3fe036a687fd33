#include "browser/LoadDatabase.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "browser/ListCounts.h"
#include "browser/ListFaults.h"
#include "browser/ListRecord.h"
#include "platform/RuntimeError.h"

namespace quavernet {

namespace {

constexpr float FullProgress = 100;

// One text column of the listed rows, as mainModule's collections show it.
class ListColumnTexts : public RowTextSource {
public:
    ListColumnTexts(std::shared_ptr<const ListData> data, std::size_t field)
        : m_data(std::move(data)), m_field(field) {}

    std::size_t Count() const override { return m_data->Listed.size(); }
    std::string_view Text(std::size_t row) const override {
        return m_data->Block.At(m_data->Listed[row - 1], m_field).View();
    }

private:
    std::shared_ptr<const ListData> m_data;
    std::size_t m_field;
};

// Measured on the whole library, not on the result: the bar of a narrow search does not reach its end.
float ProgressStep(std::int64_t files) {
    return files > 0 ? static_cast<float>(100.0 / static_cast<double>(files)) : 0;
}

// The letter is looked for where the two boxes say; with neither checked everything passes. When both are
// checked both texts are tested in any case, so that an empty one is noticed.
bool PassesLetter(const ListData& data, std::size_t record, const ListFilter& filter) {
    if (mainModule.LetterFilter == "All") {
        return true;
    }
    const auto matches = [&](std::size_t field) {
        return LetterMatch(data.Block.At(record, field).View(), mainModule.LetterFilter);
    };
    if (filter.InterpretChecked && filter.TitleChecked) {
        const bool interpret = matches(ListField::Interpret);
        const bool title = matches(ListField::Title);
        return interpret || title;
    }
    if (filter.InterpretChecked) {
        return matches(ListField::Interpret);
    }
    return !filter.TitleChecked || matches(ListField::Title);
}

bool PassesFormat(const ListData& data, std::size_t record, const ListFilter& filter) {
    if (filter.ViewMp3 && filter.ViewWav && filter.ViewOgg) {
        return true;
    }
    const std::string_view extension = data.Block.At(record, ListField::Extension).View();
    return !((extension == "mp3" && !filter.ViewMp3) || (extension == "wav" && !filter.ViewWav) ||
             (extension == "ogg" && !filter.ViewOgg));
}

// Goes through the statement's rows once: progress for every row, size sum for the listed ones.
double SelectRows(ListData& data, const ListFilter& filter, float step, LongWork& work) {
    MegabyteSum megabytes(services.regional);
    const std::size_t count = data.Block.Rows();
    data.Listed.reserve(count);
    float progress = work.Progress();
    for (std::size_t record = 0; record < count; ++record) {
        progress = progress + step <= FullProgress ? progress + step : FullProgress;
        work.SetProgress(progress);
        if (!PassesLetter(data, record, filter) || !PassesFormat(data, record, filter)) {
            continue;
        }
        const ADODB::Field id = data.Block.At(record, ListField::FileId);
        PassListFault(id, [&] { megabytes.Add(data.Block.At(record, ListField::SizeInBytes)); });
        PassListFault(id, [&] { CheckLength(data.Block.At(record, ListField::Length)); });
        data.Listed.push_back(static_cast<std::uint32_t>(record));
    }
    data.Listed.shrink_to_fit();
    return megabytes.Total();
}

} // namespace

std::int64_t CountFiles() {
    ADODB::Recordset records;
    records.Open("Select Count(*) from Files", *mainModule.Connection);
    return records.Fields(0).Integer();
}

ListResult LoadDatabase(const ListFilter& filter, const std::string& list, LongWork& work,
                        const std::function<void()>& clearList) {
    return LoadDatabase([&filter] { return filter; }, list, work, clearList);
}

ListResult LoadDatabase(const std::function<ListFilter()>& readFilter, const std::string& list,
                        LongWork& work, const std::function<void()>& clearList) {
    work.DoEvents();
    mainModule.FilePaths.Clear();
    mainModule.FileNames.Clear();
    mainModule.SelectedRows.Clear();
    work.DoEvents();
    work.SetPanel(Panel::Scanning, LoadResString(382));
    work.DoEvents();
    clearList();
    const std::int64_t allFiles = CountFiles();
    const ListFilter filter = readFilter();

    auto data = std::make_shared<ListData>();
    data->Block = mainModule.Connection->Query(ListStatement(filter, list));
    NoteListFaults(data->Block, allFiles);
    ListResult result;
    result.Totals.LibraryFiles = allFiles;
    result.Totals.TotalMegabytes = SelectRows(*data, filter, ProgressStep(allFiles), work);
    result.Rows = ListRows(data);
    mainModule.FilePaths.Show(std::make_shared<ListColumnTexts>(data, ListField::Path));
    mainModule.FileNames.Show(std::make_shared<ListColumnTexts>(data, ListField::Name));

    CountLookups(data->Block, allFiles, filter, list, result.Totals);
    return result;
}

} // namespace quavernet
