// Names for the numbers of texts that stand for something in the logic: values that records get, and what is
// put together or compared. Used with LoadResString.
#pragma once

#include <cstdint>

namespace quavernet::Texts {

inline constexpr std::int32_t OpenFailed = 316;         ///< The file could not be opened.
inline constexpr std::int32_t PlayingFailed = 317;      ///< The title above OpenFailed.
inline constexpr std::int32_t OpeningNotPossible = 329; ///< The title above the next one and NetworkMissing.
inline constexpr std::int32_t FileNotFound = 330;
inline constexpr std::int32_t SavingCancelled = 337; ///< A title.
inline constexpr std::int32_t NetworkMissing = 392;  ///< The file's folder is not there.

inline constexpr std::int32_t WritingRandomList = 354;
inline constexpr std::int32_t WritingPlaylist = 379;
inline constexpr std::int32_t PlaylistWritten = 380;   ///< Asks whether to open it.
inline constexpr std::int32_t FileWritten = 381;       ///< The title above PlaylistWritten.
inline constexpr std::int32_t TooManyFiles = 397;      ///< For the internal player.
inline constexpr std::int32_t Attention = 398;         ///< The title above TooManyFiles.
inline constexpr std::int32_t AllFiles = 788;          ///< An option of the random play.
inline constexpr std::int32_t RandomCountAdvice = 789; ///< How its count becomes a number again.

inline constexpr std::int32_t NoAlbum = 328; ///< The album of a file that names none.
inline constexpr std::int32_t Unknown = 347; ///< The title or performer of a file that names none.

inline constexpr std::int32_t WaveNotSaved =
    331; ///< A caption of the details: a file named .wav, listed under another format.
inline constexpr std::int32_t OnlyId3v1Saved = 332; ///< Any other file without a tag.
inline constexpr std::int32_t WaveNotEdited = 333;  ///< A WAV file.
inline constexpr std::int32_t DetailsFileMissing = 334;
inline constexpr std::int32_t DetailsNotShown = 335; ///< The title above the one before.
inline constexpr std::int32_t WriteProtected = 444;

inline constexpr std::int32_t RemainingTime = 345; ///< Before a time in the status bar.
inline constexpr std::int32_t ElapsedTime = 346;   ///< Before a time in the status bar.
inline constexpr std::int32_t LastScan = 351;      ///< Before a date in the window's title.
inline constexpr std::int32_t Ready = 432;         ///< In the status bar while nothing is being done.
inline constexpr std::int32_t ErrorStart = 445;    ///< Before number and description of a failure.
inline constexpr std::int32_t TreeRoot = 591;      ///< The node that holds all categories.
inline constexpr std::int32_t TreeFaults = 779;    ///< Before the faults that a tree had at the start.
inline constexpr std::int32_t ListFaults = 782;    ///< Before those of the list.
inline constexpr std::int32_t NoMediaEngine = 780; ///< Nothing can be played. Before the reason.
inline constexpr std::int32_t NoSoundDevice = 781; ///< All plays in silence.

inline constexpr std::int32_t ChooseFolder = 342;
inline constexpr std::int32_t PlaylistFilter = 361; ///< The kind of a playlist, in dialogs.
inline constexpr std::int32_t PlayerPaused = 393;   ///< The player's caption while it pauses.
inline constexpr std::int32_t Player = 394;         ///< Its caption otherwise.
inline constexpr std::int32_t PlayingTime = 395;    ///< Before a time in the player.
inline constexpr std::int32_t AudioFilter = 396;    ///< Two kinds of files that can be added, in dialogs.

inline constexpr std::int32_t Converting = 375;
inline constexpr std::int32_t TargetFolderMissing = 376; ///< Followed by the next.
inline constexpr std::int32_t SavedInSourceFolder = 377;
inline constexpr std::int32_t FolderOrDriveMissing = 378; ///< The title above the two.

inline constexpr std::int32_t PrintingList = 369;        ///< In the status bar while the list prints.
inline constexpr std::int32_t ListTitle = 370;           ///< On each printed page.
inline constexpr std::int32_t PrintingNotPossible = 790; ///< A title.

inline constexpr std::int32_t ExchangeFilter = 365; ///< The kind of an exchange file, in dialogs.
inline constexpr std::int32_t FilesNotAdded = 366;  ///< An import lacks some files. Followed by the next.
inline constexpr std::int32_t FilesNotFound = 367;
inline constexpr std::int32_t Note = 368; ///< The title above the two.

inline constexpr std::int32_t NewestFiles = 500; ///< The title of the charts in one mode.
inline constexpr std::int32_t TopFiles = 504;    ///< In the other mode. Before a number.
inline constexpr std::int32_t ChartHits = 503;   ///< What heads their third column.
inline constexpr std::int32_t ChartDate = 505;   ///< The same among the newest files.

inline constexpr std::int32_t ProgramEnds = 443;     ///< Title of the box with which the program ends.
inline constexpr std::int32_t Restart = 778;         ///< Its second button.
inline constexpr std::int32_t NotStartedAgain = 783; ///< What that may come to.

// How a long job has ended; see EndWord.h.
inline constexpr std::int32_t Done = 850;
inline constexpr std::int32_t CancelledAfter = 851; ///< Before a time.
inline constexpr std::int32_t EndedEarly = 852;     ///< By a failure that is not told.
inline constexpr std::int32_t NewFiles = 853;       ///< This and the next two: after a number.
inline constexpr std::int32_t UpdatedFiles = 854;
inline constexpr std::int32_t SkippedFiles = 855;
inline constexpr std::int32_t RemovedFiles = 856; ///< After a number; so are all up to NewCategory.
inline constexpr std::int32_t RemovedFile = 857;
inline constexpr std::int32_t NewEntries = 858;
inline constexpr std::int32_t NewEntry = 859;
inline constexpr std::int32_t NewCategories = 860;
inline constexpr std::int32_t NewCategory = 861;
inline constexpr std::int32_t NoFileFound = 862;
inline constexpr std::int32_t NoFileMissing = 863;
inline constexpr std::int32_t PrintedPage = 866; ///< After a number; so are the next three.
inline constexpr std::int32_t PrintedPages = 867;
inline constexpr std::int32_t RenamedFile = 868;
inline constexpr std::int32_t RenamedFiles = 869;
inline constexpr std::int32_t NotRenamedFile = 872; ///< After a number: the disk refused it. So is the next.
inline constexpr std::int32_t NotRenamedFiles = 873;
inline constexpr std::int32_t ShowProgram = 870; ///< What a click on the desktop's note does.

inline constexpr std::int32_t NoBackup = 772; ///< Of the database. Before the reason.

inline constexpr std::int32_t SelectionTooLarge = 864;     ///< To be converted at once.
inline constexpr std::int32_t ConvertingNotPossible = 865; ///< The title above it.

// What a frame header says.
inline constexpr std::int32_t Stereo = 447; ///< The four channel modes follow each other from here.
inline constexpr std::int32_t ReservedEmphasis = 451;
inline constexpr std::int32_t No = 452;
inline constexpr std::int32_t Yes = 453;

// The main window around the list.
inline constexpr std::int32_t LiftFilters = 806;
inline constexpr std::int32_t Hidden = 871; ///< After formats that the list leaves out.
inline constexpr std::int32_t DoubleClickSorts = 830;
inline constexpr std::int32_t SplitterName = 831;

// The facts in the about box: a sentence, and what is before the three values.
inline constexpr std::int32_t Licence = 832;
inline constexpr std::int32_t Toolkit = 833;
inline constexpr std::int32_t LibraryPlace = 834;
inline constexpr std::int32_t SettingsPlace = 835;

// What a screen reader says of the main window.
inline constexpr std::int32_t FirstLetter = 900; ///< The letters as a group.
inline constexpr std::int32_t SortedAscending = 901;
inline constexpr std::int32_t SortedDescending = 902;
inline constexpr std::int32_t StatusBar = 903;
inline constexpr std::int32_t CategoryName = 904; ///< The field in which it is typed.

} // namespace quavernet::Texts
