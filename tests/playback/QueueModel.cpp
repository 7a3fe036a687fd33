#include "playback/QueueModel.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>

namespace quavernet::test {

namespace {

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string LastFour(const std::string& path) {
    return Lower(path.size() < 4 ? path : path.substr(path.size() - 4));
}

std::string Without(std::string text, const std::string& part) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at)) {
        text.erase(at, part.size());
    }
    return text;
}

std::string FileNameOnly(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

// The run-time rounds half to even.
int Rounded(double value) {
    return static_cast<int>(std::nearbyint(value));
}

std::string Clock(int length) {
    const int minutes = length / 60;
    int seconds = length % 60;
    if (seconds == -1) {
        seconds = 0;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%s%02d:%s%02d", minutes < 0 ? "-" : "", std::abs(minutes),
                  seconds < 0 ? "-" : "", std::abs(seconds));
    return text;
}

} // namespace

std::string QueueModel::TextOf(const std::string& path) const {
    if (!library.contains(path)) {
        throw Failure();
    }
    return library.at(path).Text;
}

void QueueModel::Add(const std::string& text, const std::string& path) {
    lstFiles.push_back(text);
    PlayerPaths.push_back(path);
}

void QueueModel::SelectEntry(int position_) {
    if (position_ < 0 || position_ >= static_cast<int>(lstFiles.size())) {
        throw Failure();
    }
    ListIndex = position_;
}

double QueueModel::Duration() const {
    return FileName.empty() ? -1 : durations.contains(FileName) ? durations.at(FileName) : 60;
}

void QueueModel::AddPlaylist(const std::string& path) {
    Add(library.contains(path) ? library.at(path).Text : FileNameOnly(path), path);
    ListIndex = 0;
}

void QueueModel::FillPlaylistFromCharts(const std::string& path) {
    cmdRemAll();
    try {
        Add(TextOf(path), path);
        ListIndex = 0;
    } catch (const Failure&) {
    }
}

void QueueModel::FillPlaylist(const std::vector<std::string>& paths, bool always) {
    if (lstFiles.empty() || !always) {
        cmdRemAll();
    }
    try {
        for (const std::string& path : paths) {
            Add(TextOf(path), path);
        }
        if (!always) {
            SelectEntry(0);
        }
    } catch (const Failure&) {
    }
}

void QueueModel::FillRandomPlaylist(const std::string& path) {
    try {
        Add(TextOf(path), path);
    } catch (const Failure&) {
    }
}

void QueueModel::Caption() {
    // An entry that is not there has no text: the window's own name.
    const bool hasEntry = CurrentTrack >= 1 && CurrentTrack <= static_cast<int>(lstFiles.size());
    caption = minimized && !PlayerPaths.empty() && hasEntry
                  ? Without(lstFiles[static_cast<std::size_t>(CurrentTrack) - 1], "|>")
                  : "Quavernet Player";
}

void QueueModel::Resize() {
    Caption();
}

void QueueModel::PlayFile(int index) {
    Play(index, false);
}

void QueueModel::PlayFileFromTree(int index) {
    Play(index, true);
}

void QueueModel::Play(int& index, bool fromTree) {
    Caption();                 // 1
    if (PlayerPaths.empty()) { // 2
        return;
    }
    try {
        if (index < 1 || index > static_cast<int>(PlayerPaths.size())) {
            throw Failure();
        }
        if (LastFour(PlayerPaths[static_cast<std::size_t>(index) - 1]) == ".ogg") { // 3
            if (CurrentTrack == 0) {
                CurrentTrack = 1;
            }
            SelectEntry(CurrentTrack - 1);
            throw Failure();
        }
        Steps4To15(index, fromTree);
    } catch (const Failure&) {
        FileError(); // 16
    }
}

void QueueModel::Steps4To15(int& index, bool fromTree) {
    const std::string path = PlayerPaths[static_cast<std::size_t>(index) - 1];
    engine.push_back("file " + path); // 4
    FileName.clear();
    position = -1;
    if (refused.contains(path)) {
        throw Failure();
    }
    FileName = path;
    position = 0;
    engine.push_back("Play");
    CurrentTrack = index;          // 5
    if (!library.contains(path)) { // 6
        throw Failure();
    }
    const std::string quality = library.at(path).Quality;
    int length = library.at(path).Length;
    if (length > 32767) {
        throw Failure();
    }
    Paused = false; // 7
    SelectEntry(CurrentTrack - 1);
    lblFile = FileNameOnly(path); // 8
    toolTip = path;
    if (!quality.empty() || fromTree) { // 9
        lblQuality = quality + " bit";
    } else {
        lblQuality = "0 bit"; // These files are not there: the inspection finds nothing.
    }
    if (length == 0) { // 10
        length = Rounded(Duration());
        if (length > 32767) {
            throw Failure();
        }
    }
    lblTime = Clock(length);                             // 11, 12
    lblLength = "Spieldauer: " + Clock(length) + " min"; // 13
    TakeMarkerOff(CurrentTrack);                         // 14
    std::string& text = lstFiles[static_cast<std::size_t>(CurrentTrack) - 1];
    text = "|> " + text;
    SliderMax = Rounded(Duration()); // 15
}

void QueueModel::FileError() {
    if (ListIndex < 0) {
        return;
    }
    std::string& text = lstFiles[static_cast<std::size_t>(ListIndex)];
    if (Lower(text).find("***fileerror***") == std::string::npos) {
        text = "(" + text + ")" + " ***FileError***";
    }
}

void QueueModel::TakeMarkerOff(int entry) {
    if (entry >= 1 && entry <= static_cast<int>(lstFiles.size())) {
        std::string& text = lstFiles[static_cast<std::size_t>(entry) - 1];
        text = Without(text, "|> ");
    }
}

void QueueModel::EndOfStream() {
    try {
        TakeMarkerOff(CurrentTrack);
        if (chkRepeat) {
            Play(CurrentTrack, false);
        } else if (chkRepeatAll) {
            if (ListIndex == static_cast<int>(lstFiles.size()) - 1) {
                CurrentTrack = 1;
                Play(CurrentTrack, false);
                SelectEntry(0);
            } else {
                CurrentTrack = CurrentTrack + 1;
                Play(CurrentTrack, false);
            }
        } else {
            CurrentTrack = CurrentTrack + 1;
            if (CurrentTrack <= static_cast<int>(lstFiles.size())) {
                Play(CurrentTrack, false);
            } else {
                CurrentTrack = CurrentTrack - 1;
            }
            SelectEntry(CurrentTrack - 1);
        }
    } catch (const Failure&) {
    }
}

std::string QueueModel::NextFile() const {
    QueueModel copy = *this;
    copy.engine.clear();
    copy.EndOfStream();
    return copy.engine.empty() ? "" : copy.engine.front().substr(5);
}

void QueueModel::cmdPlay() {
    if (ListIndex >= 0) {
        CurrentTrack = ListIndex + 1;
        Play(CurrentTrack, false);
    }
}

void QueueModel::cmdPause() {
    if (lblFile.empty()) {
        return;
    }
    engine.emplace_back(Paused ? "Play" : "Pause");
    caption = Paused ? "Quavernet Player" : "Quavernet Player - Pause";
    Paused = !Paused;
}

void QueueModel::cmdStop() {
    engine.emplace_back("Stop");
    engine.emplace_back("position 0");
    position = FileName.empty() ? -1 : 0;
    TakeMarkerOff(CurrentTrack);
    Timer(); // One comes at once.
}

void QueueModel::cmdNext() {
    const int ListCount = static_cast<int>(lstFiles.size());
    if (ListCount == 0) {
        return;
    }
    TakeMarkerOff(CurrentTrack);
    if (CurrentTrack == 0) {
        CurrentTrack = 1;
    }
    CurrentTrack = CurrentTrack + 1;
    if (CurrentTrack > ListCount) {
        CurrentTrack = ListCount;
        if (ListIndex >= 0) {
            lstFiles.back() = "|> " + lstFiles[static_cast<std::size_t>(ListIndex)];
        }
    } else {
        Play(CurrentTrack, false);
    }
}

void QueueModel::cmdLast() {
    if (lstFiles.empty()) {
        return;
    }
    TakeMarkerOff(CurrentTrack);
    CurrentTrack = CurrentTrack - 1;
    if (CurrentTrack >= 1) {
        Play(CurrentTrack, false);
    } else {
        CurrentTrack = 1;
        if (ListIndex >= 0) {
            lstFiles.front() = "|> " + lstFiles[static_cast<std::size_t>(ListIndex)];
        }
    }
}

void QueueModel::DblClick() {
    TakeMarkerOff(CurrentTrack);
    CurrentTrack = ListIndex + 1;
    Play(CurrentTrack, false);
}

void QueueModel::KeyDown(int key) {
    const int ListCount = static_cast<int>(lstFiles.size());
    if (key == 13) {
        const int number = ListIndex + 1;
        PlayFile(number);
        CurrentTrack = number;
    } else if (key == 37 || key == 38) {
        CurrentTrack = CurrentTrack - 1;
        if (CurrentTrack < 1) {
            CurrentTrack = 1;
        }
    } else if (key == 39 || key == 40) {
        if (CurrentTrack == 0) {
            CurrentTrack = 1;
        }
        CurrentTrack = CurrentTrack + 1;
        if (CurrentTrack > ListCount) {
            CurrentTrack = ListCount;
        }
    } else if (key == 46) {
        cmdRem();
    }
    // The list box moves up and down itself, later.
    if (key == 37 && ListCount > 0) {
        ListIndex = ListIndex > 0 ? ListIndex - 1 : 0;
    } else if (key == 39 && ListCount > 0) {
        ListIndex = ListIndex < ListCount - 1 ? ListIndex + 1 : ListCount - 1;
    }
}

void QueueModel::cmdRem() {
    if (ListIndex < 0) {
        return;
    }
    if (CurrentTrack >= ListIndex) {
        CurrentTrack = CurrentTrack - 1;
    }
    const int remembered = ListIndex;
    PlayerPaths.erase(PlayerPaths.begin() + remembered);
    lstFiles.erase(lstFiles.begin() + remembered);
    const int last = static_cast<int>(lstFiles.size()) - 1;
    ListIndex = remembered > last ? last : remembered;
}

void QueueModel::cmdRemAll() {
    lstFiles.clear();
    ListIndex = -1;
    while (!PlayerPaths.empty()) {
        PlayerPaths.erase(PlayerPaths.begin());
    }
}

int QueueModel::Draw(int low, int high) {
    draws.Randomize();
    const double r = draws.Rnd();
    const float v = static_cast<float>(r * (high - low) + low);
    return static_cast<int>(std::floor(static_cast<double>(v) + 0.5));
}

void QueueModel::cmdRandomize() {
    std::vector<std::string> paths;
    std::vector<std::string> texts;
    const int RandomCount = static_cast<int>(PlayerPaths.size());
    draws.Randomize();
    for (int i = 1; i <= RandomCount; ++i) {
        const int r = Draw(1, static_cast<int>(PlayerPaths.size()));
        paths.push_back(PlayerPaths[static_cast<std::size_t>(r) - 1]);
        texts.push_back(lstFiles[static_cast<std::size_t>(r) - 1]);
        lstFiles.erase(lstFiles.begin() + r - 1);
        PlayerPaths.erase(PlayerPaths.begin() + r - 1);
    }
    cmdRemAll();
    for (std::size_t i = 0; i < paths.size(); ++i) {
        Add(texts[i], paths[i]);
    }
    PlayFile(1);
}

void QueueModel::DropOnWindow(const std::vector<std::string>& paths) {
    const std::string kind = LastFour(paths.front());
    if (kind != ".mp3" && kind != ".ogg" && kind != ".wav") {
        return;
    }
    cmdRemAll();
    for (const std::string& path : paths) {
        AddPlaylist(path);
    }
    PlayFile(1);
}

void QueueModel::DropOnList(const std::vector<std::string>& paths) {
    const std::string kind = LastFour(paths.front());
    if (kind == ".mp3" || kind == ".ogg" || kind == ".wav") {
        for (const std::string& path : paths) {
            AddPlaylist(path);
        }
    }
}

void QueueModel::ClickRepeat() {
    chkRepeat = !chkRepeat;
    if (chkRepeat && chkRepeatAll) {
        chkRepeatAll = false;
    }
}

void QueueModel::ClickRepeatAll() {
    chkRepeatAll = !chkRepeatAll;
    if (chkRepeat && chkRepeatAll) {
        chkRepeat = false;
    }
}

void QueueModel::Timer() {
    SliderValue = std::max(Rounded(position), 0); // -1 shows as 0.
    const int PositionSeconds = Rounded(position);
    if (m_showElapsed) {
        lblTime = Clock(PositionSeconds);
    } else {
        lblTime = PositionSeconds == -1 ? "00:00" : Clock(SliderMax - PositionSeconds);
    }
}

void QueueModel::Slider1(int seconds) {
    engine.push_back("position " + std::to_string(seconds));
    position = FileName.empty() ? -1 : seconds;
    Timer(); // One comes at once.
}

void QueueModel::TimeDblClick() {
    m_showElapsed = !m_showElapsed;
    Timer(); // One comes at once.
}

} // namespace quavernet::test
