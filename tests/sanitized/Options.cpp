// Part of every program in a test build under the sanitizers: the runtime libraries ask these functions
// before main. A finding ends a process with 99, which is no code of the program's own: it ends with 1 after
// a failure that it tells. The variables ASAN_OPTIONS, LSAN_OPTIONS and UBSAN_OPTIONS win over what is said
// here.

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the runtime's.
const char* __asan_default_options();
const char* __lsan_default_options();
const char* __ubsan_default_options();
const char* __lsan_default_suppressions();

const char* __asan_default_options() {
    return "detect_leaks=1:exitcode=99";
}

const char* __lsan_default_options() {
    return "print_suppressions=0:exitcode=99";
}

const char* __ubsan_default_options() {
    return "print_stacktrace=1:exitcode=99";
}

// Leaks that are not ours: what libraries allocate once and keep to the end of the process without a pointer
// that the checker could find. Each line names a function or library on the stack of the allocation.
const char* __lsan_default_suppressions() {
    return
        // Qt: the counters behind QPointers of the platform window and the menu bar. A test of the end of the
        // process throws through the toolkit's closing of a window, where the real program does not come
        // back: the two counters stay.
        "leak:QtSharedPointer::ExternalRefCountData::getAndRef\n"
        // Qt: what its menu holds while a command of it fails, which no frame of the toolkit lets go.
        "leak:QMenu::keyPressEvent\n"
        // The library of the desktop's bus: its table of known strings, kept to the end.
        "leak:libdbus-1.so\n"
        // One of the ways to a sound device that the media engine tries where there is none.
        "leak:libSDL2\n"
#ifdef QUAVERNET_ENDS_AT_ONCE
        // The media engine is still at work when this program ends. Its list of chapters begins behind a head
        // of the engine's own: a list without chapters points to the end of its memory, where the checker
        // does not see what it belongs to. Programs that let go of the engine are checked without this line.
        "leak:libmpv.so\n"
#endif
        // Fonts: the configuration and its caches, kept to the end.
        "leak:libfontconfig.so\n";
}
// NOLINTEND(bugprone-reserved-identifier)
}
