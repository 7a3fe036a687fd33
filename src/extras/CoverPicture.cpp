#include "extras/CoverPicture.h"

#include "app/MainModule.h"
#include "app/ScopedValue.h"
#include "extras/PictureHeader.h"

#include <QIODevice>
#include <QImageReader>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace quavernet {

namespace {

constexpr int MostMegabytes = 128;
constexpr std::uint64_t MostBytes = std::uint64_t(MostMegabytes) * 1024 * 1024;
constexpr std::int64_t MostPixels = 200'000'000;

/// An open file as the toolkit's readers want it. They are C, through which no exception may pass: a device
/// that fails is the end of the file to them.
class FileDevice : public QIODevice {
public:
    explicit FileDevice(const BinaryFile& file) : m_file(file) { open(QIODevice::ReadOnly); }

    bool isSequential() const override { return false; }
    qint64 size() const override { return static_cast<qint64>(m_file.Size()); }
    bool seek(qint64 position) override {
        m_position = position;
        return QIODevice::seek(position);
    }

protected:
    qint64 readData(char* data, qint64 maxSize) override {
        try {
            const std::size_t read =
                m_file.ReadAt(static_cast<std::uint64_t>(m_position),
                              std::as_writable_bytes(std::span(data, static_cast<std::size_t>(maxSize))));
            m_position += static_cast<qint64>(read);
            return static_cast<qint64>(read);
        } catch (const RuntimeError&) {
            return -1;
        }
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    const BinaryFile& m_file;
    qint64 m_position = 0;
};

/// The toolkit's limit for one picture while it lives.
class AllocationLimit {
public:
    AllocationLimit() { QImageReader::setAllocationLimit(MostMegabytes); }
    ~AllocationLimit() { QImageReader::setAllocationLimit(m_before); }
    AllocationLimit(const AllocationLimit&) = delete;
    AllocationLimit& operator=(const AllocationLimit&) = delete;

private:
    int m_before = QImageReader::allocationLimit();
};

// The toolkit has readers for much more than covers, some of which run what the file tells them to.
const char* ReaderOf(PictureFormat format) {
    switch (format) {
    case PictureFormat::Bmp:
        return "bmp";
    case PictureFormat::Gif:
        return "gif";
    case PictureFormat::Jpeg:
        return "jpeg";
    case PictureFormat::Png:
        return "png";
    case PictureFormat::WebP:
        return "webp";
    case PictureFormat::None:
        break;
    }
    return nullptr;
}

// What the toolkit's limit does not see: a JPEG's coefficients and a PNG's texts are the libraries' own, a
// WebP file is read whole, and others are read to their end, however far that is.
bool CostsTooMuch(const BinaryFile& file, PictureFormat format) {
    return file.Size() > MostBytes ||
           (format == PictureFormat::Jpeg && JpegCoefficientBytes(file) > MostBytes) ||
           (format == PictureFormat::Png && HasOversizedTexts(file));
}

QImage Read(const BinaryFile& file, const QSize& size) {
    const PictureFormat format = FormatOfPicture(file);
    const char* name = ReaderOf(format);
    if (name == nullptr || CostsTooMuch(file, format)) {
        return {};
    }
    FileDevice device(file);
    QImageReader reader(&device, name);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    const QSize whole = reader.size();
    if (whole.isEmpty() || std::int64_t(whole.width()) * whole.height() > MostPixels) {
        return {};
    }
    const bool turned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    reader.setScaledSize(turned ? size.transposed() : size);
    const AllocationLimit limit;
    return reader.read();
}

} // namespace

QImage ReadCoverPicture(const std::string& path, const QSize& size) {
    try {
        const auto file = services.files->Open(path, BinaryFile::Access::Read);
        const QImage picture = Read(*file, size);
        return picture.isNull() ? picture : picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    } catch (const RuntimeError&) {
        return {};
    }
}

} // namespace quavernet
