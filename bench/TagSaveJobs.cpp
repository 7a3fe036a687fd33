#include "TagSaveJobs.h"

#include "BareFile.h"
#include "Lines.h"

#include "adapters/id3v2/TagLibComponent.h"
#include "adapters/posix/PosixFiles.h"

#include <filesystem>
#include <memory>
#include <stdexcept>

namespace quavernet::bench {

namespace {

constexpr double WishInPlace = 2;
constexpr double WishWhole = 1.5;
constexpr std::size_t TagSize = 4096; // About as long as the tag that the floor writes over.

class TagSaves {
public:
    TagSaves(const std::string& song, const std::string& work)
        : m_song(song), m_path(work + "/saved.mp3"), m_copy(work + "/copy.mp3") {}
    ~TagSaves() {
        std::filesystem::remove(m_path);
        std::filesystem::remove(m_copy);
    }
    TagSaves(const TagSaves&) = delete;
    TagSaves& operator=(const TagSaves&) = delete;

    /// The tag is loaded before each round, as the dialog does when it opens.
    void Load() {
        m_tag = CreateTagLibComponent(m_files);
        m_tag->LoadFile(m_path);
    }
    void Save(TagComponent::Field field, const std::string& text) {
        m_tag->SetTagField(field, text);
        m_tag->SaveFile(m_path);
    }
    void RequireSaved(TagComponent::Field field, const std::string& text) {
        Load();
        if (m_tag->TagField(field) != text) {
            throw std::runtime_error("the tag was not saved");
        }
    }

    void InPlace(int rounds) {
        CopyAndSync(m_song, m_path);
        CopyAndSync(m_song, m_copy);
        Load();
        Save(TagComponent::Title, "First"); // Makes room.
        const auto size = std::filesystem::file_size(m_path);
        const std::string bytes(TagSize, '\0');
        std::string title = "First";
        const auto prepare = [&] {
            Load();
            title = title == "First" ? "Other" : "First";
        };
        Print(Measure("ID3v2 tag saved that fits its room, floor: write and sync", 1, {.ratio = WishInPlace},
                      rounds, {prepare, [&] { Save(TagComponent::Title, title); }},
                      {nullptr, [&] { WriteAndSync(m_copy, bytes); }}));
        RequireSaved(TagComponent::Title, title);
        if (std::filesystem::file_size(m_path) != size) {
            throw std::runtime_error("the tag did not fit");
        }
    }
    void Whole(int rounds) {
        const std::string comment(20'000, 'c');
        const auto prepare = [&] {
            CopyAndSync(m_song, m_path);
            Load();
        };
        Print(Measure("ID3v2 tag saved that needs more room, floor: copy and sync", 1, {.ratio = WishWhole},
                      rounds, {prepare, [&] { Save(TagComponent::Comment, comment); }},
                      {[&] { std::filesystem::remove(m_copy); }, [&] { CopyAndSync(m_song, m_copy); }}));
        RequireSaved(TagComponent::Comment, comment);
    }

private:
    PosixFiles m_files;
    std::string m_song;
    std::string m_path;
    std::string m_copy;
    std::unique_ptr<TagComponent> m_tag;
};

} // namespace

void TagSaveJobs(const std::string& song, const std::string& work, int rounds) {
    TagSaves saves(song, work);
    saves.InPlace(rounds);
    saves.Whole(rounds);
}

} // namespace quavernet::bench
