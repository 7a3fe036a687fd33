#include "window/CoverJobs.h"

#include "Lines.h"

#include "adapters/qt/QtText.h"
#include "app/MainModule.h"
#include "extras/CoverBox.h"
#include "extras/Covers.h"

#include <QImageReader>
#include <QImageWriter>
#include <QPainter>

#include <filesystem>
#include <random>
#include <stdexcept>

namespace quavernet::bench {

namespace {

constexpr Wanted ListLimit{.limit = 0.05};
constexpr Wanted PictureLimit{.ratio = 1.2};
constexpr int Albums = 5000;
constexpr QSize PictureSize(3000, 3000);

/// A view that shows nothing: the list alone is timed.
class NoView : public CoverView {
public:
    void RemovePictures() override {}
    void ShowPicture(CoverPage, const std::string&) override {}
    bool LoadPicture(CoverPage, const std::string&) override { return true; }
    void SetPanel(const std::string&) override {}
    void SetMousePointer(MousePointer) override {}
};

/// As uneven as a photograph: flat areas would decode too fast.
QImage MakePicture() {
    QImage picture(PictureSize / 4, QImage::Format_RGB32);
    std::mt19937 random(5);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const auto noise = static_cast<int>(random() % 32);
            picture.setPixel(x, y, qRgb((x / 3 + noise) % 256, (y / 3 + noise) % 256, (x + y) / 6 % 256));
        }
    }
    return picture.scaled(PictureSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// A library of 20,000 files on 5,000 albums, each of a performer of its own, in place of the open one.
void OpenAlbums(const std::string& path) {
    std::filesystem::copy_file(services.shell->ProgramFolder() + "/Quavernet.db", path,
                               std::filesystem::copy_options::overwrite_existing);
    mainModule.Connection = services.createConnection();
    mainModule.Connection->Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path);
    std::string performers;
    std::string albums;
    std::string files;
    for (int i = 1; i <= Albums; ++i) {
        const std::string comma = i == 1 ? "" : ", ";
        const std::string key = std::to_string(i);
        // Not in the order of the names.
        performers += comma + "(" + key + ", 'Performer " + std::to_string(i * 7919 % 10007) + "')";
        albums += comma + "(" + key + ", 'Some album number " + key + "')";
        for (int file = 0; file < 4; ++file) {
            files += (files.empty() ? "" : ", ") + ("(1, " + key) + ", " + key + ", '/" + key + "/" +
                     std::to_string(file) + ".mp3')";
        }
    }
    mainModule.Connection->Execute("Insert into Interpret (Inter_id, Interpret) values " + performers);
    mainModule.Connection->Execute("Insert into Albums (Album_id, Name) values " + albums);
    mainModule.Connection->Execute("Insert into Files (Title_id, Inter_id, Album_id, Path) values " + files);
    mainModule.Connection->Commit();
}

void PictureJob(const std::string& path, const std::string& name, bool progressive, int rounds) {
    QImageWriter writer(ToQString(path), "jpeg");
    writer.setProgressiveScanWrite(progressive);
    if (!writer.write(MakePicture())) {
        throw std::runtime_error("no picture " + path);
    }
    CoverBox box;
    box.show();
    const QSize pixels = (QSizeF(box.size()) * box.devicePixelRatioF()).toSize();
    QImage screen(pixels, QImage::Format_RGB32);
    screen.setDevicePixelRatio(box.devicePixelRatioF());
    const auto show = [&] {
        if (!box.LoadPicture(path)) {
            throw std::runtime_error("the picture is not shown");
        }
        box.render(&screen);
    };
    const auto decode = [&] {
        QImageReader reader(ToQString(path));
        reader.setScaledSize(pixels);
        if (reader.read().isNull()) {
            throw std::runtime_error("the picture is not decoded");
        }
    };
    Print(Measure(name, 0, PictureLimit, rounds, {nullptr, show}, {nullptr, decode}));
}

} // namespace

void CoverJobs(const std::string& work, int rounds) {
    OpenAlbums(work + "/covers.db");
    NoView view;
    Covers covers(view);
    const Line line = Measure("list of 5,000 albums, 20,000 files", 0, ListLimit, rounds,
                              {nullptr, [&] { covers.LoadAlbumList(); }}, {});
    if (covers.Albums().size() != Albums) {
        throw std::runtime_error("the list has not all albums");
    }
    Print(line);
    // One album of them all, as a scan of files without tags makes it, and many a compilation.
    mainModule.Connection->Execute("Update Files set Album_id = 1");
    mainModule.Connection->Commit();
    Print(Measure("list of one album of 5,000 performers, 20,000 files", 0, ListLimit, rounds,
                  {nullptr, [&] { covers.LoadAlbumList(); }}, {}));
    PictureJob(work + "/cover.jpg", "cover of 3000 x 3000 shown, floor: bare scaled decode", false, rounds);
    PictureJob(work + "/cover-progressive.jpg", "the same, progressive, floor: bare scaled decode", true,
               rounds);
}

} // namespace quavernet::bench
