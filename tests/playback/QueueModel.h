// The player's queue once more, as slow and plain as it can be told: a list box and a collection side by
// side, one step after the other. Random sequences compare it with the real one.
#pragma once

#include "app/RandomNumbers.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace quavernet::test {

class QueueModel {
public:
    struct Row {
        std::string Text; ///< Performer and title.
        std::string Quality;
        int Length;
    };

    // The world: what the library knows, which files the engine takes and how long they are.
    std::map<std::string, Row> library;
    std::set<std::string> refused;
    std::map<std::string, double> durations;
    RandomNumbers draws;
    bool minimized = false;

    // What can be seen of it.
    std::vector<std::string> lstFiles;
    std::vector<std::string> PlayerPaths;
    int ListIndex = -1;
    int CurrentTrack = 0;
    bool Paused = false;
    std::string caption, lblFile, toolTip, lblQuality, lblTime, lblLength;
    int SliderMax = 0;
    int SliderValue = 0;
    bool chkRepeat = false;
    bool chkRepeatAll = false;

    // The engine.
    std::vector<std::string> engine; ///< Its calls.
    std::string FileName;
    double position = -1;

    void AddPlaylist(const std::string& path);
    void FillPlaylistFromCharts(const std::string& path);
    void FillPlaylist(const std::vector<std::string>& paths, bool always);
    void FillRandomPlaylist(const std::string& path);
    void PlayFile(int index);
    void PlayFileFromTree(int index);
    void EndOfStream();
    void cmdPlay();
    void cmdPause();
    void cmdStop();
    void cmdNext();
    void cmdLast();
    void DblClick();
    void KeyDown(int key);
    void cmdRem();
    void cmdRemAll();
    void cmdRandomize();
    void DropOnWindow(const std::vector<std::string>& paths);
    void DropOnList(const std::vector<std::string>& paths);
    void ClickRepeat();
    void ClickRepeatAll();
    void Timer();
    void Slider1(int seconds);
    void TimeDblClick();
    void Resize();

    /// The file that the engine would be given if its own ended now; empty: none.
    std::string NextFile() const;

private:
    struct Failure {};

    void Play(int& index, bool fromTree);
    void Steps4To15(int& index, bool fromTree);
    void Caption();
    void FileError();
    void TakeMarkerOff(int entry);
    void SelectEntry(int position);
    void Add(const std::string& text, const std::string& path);
    std::string TextOf(const std::string& path) const; ///< Fails for a file outside the library.
    double Duration() const;
    int Draw(int low, int high);

    bool m_showElapsed = true;
};

} // namespace quavernet::test
