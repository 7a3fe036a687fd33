#include "adapters/mpv/LoadedPages.h"

#include <cstddef>
#include <span>

#include <elf.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

namespace quavernet::mpv {

namespace {

std::span<const ElfW(Phdr)> SegmentsOf(const dl_phdr_info& object) {
    return {object.dlpi_phdr, object.dlpi_phnum};
}

// The loader changes the code of a library with text relocations. These changes are in memory alone.
bool HasChangedCode(const dl_phdr_info& object) {
    for (const ElfW(Phdr) & segment : SegmentsOf(object)) {
        if (segment.p_type == PT_DYNAMIC) {
            const auto* entry = reinterpret_cast<const ElfW(Dyn)*>(object.dlpi_addr + segment.p_vaddr);
            for (; entry->d_tag != DT_NULL; ++entry) {
                if (entry->d_tag == DT_TEXTREL ||
                    (entry->d_tag == DT_FLAGS && (entry->d_un.d_val & DF_TEXTREL) != 0)) {
                    return true;
                }
            }
        }
    }
    return false;
}

int Remember(dl_phdr_info* object, std::size_t, void* objects) {
    static_cast<LoadedObjects*>(objects)->insert(object->dlpi_addr);
    return 0;
}

int GiveBack(dl_phdr_info* object, std::size_t, void* except) {
    if (static_cast<const LoadedObjects*>(except)->contains(object->dlpi_addr) || HasChangedCode(*object)) {
        return 0;
    }
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    for (const ElfW(Phdr) & segment : SegmentsOf(*object)) {
        if (segment.p_type == PT_LOAD && (segment.p_flags & PF_W) == 0) {
            const std::uintptr_t begin = (object->dlpi_addr + segment.p_vaddr) / page * page;
            const std::uintptr_t end = object->dlpi_addr + segment.p_vaddr + segment.p_filesz;
            ::madvise(reinterpret_cast<void*>(begin), end - begin,
                      MADV_DONTNEED); // NOLINT(performance-no-int-to-ptr)
        }
    }
    return 0;
}

} // namespace

LoadedObjects ObjectsInMemory() {
    LoadedObjects objects;
    ::dl_iterate_phdr(Remember, &objects);
    return objects;
}

void GiveBackPages(const LoadedObjects& except) {
    LoadedObjects kept = except;
    ::dl_iterate_phdr(GiveBack, &kept);
}

} // namespace quavernet::mpv
