"""A cage that needs no rights: who is in it, and every program that it starts, dies at the attempt to make a socket
for a network."""
import ctypes
import os
import platform
import struct

# Of the kernel's headers: what the filter's little machine can do, and what it answers.
LOAD, JUMP_IF_EQUAL, RETURN = 0x20, 0x15, 0x06
ALLOW, KILL_PROCESS = 0x7FFF0000, 0x80000000
SET_NO_NEW_PRIVILEGES, SET_FILTER, FILTER_MODE = 38, 22, 2
CALL_NUMBER, ARCHITECTURE, FIRST_ARGUMENT = 0, 4, 16

SOCKET_CALLS = {"x86_64": (0xC000003E, 41), "aarch64": (0xC00000B7, 198)}
FAMILIES = {"AF_INET": 2, "AF_INET6": 10, "AF_PACKET": 17}


def _program():
    architecture, socket_call = SOCKET_CALLS[platform.machine()]
    steps = [(LOAD, 0, 0, ARCHITECTURE), (JUMP_IF_EQUAL, 1, 0, architecture), (RETURN, 0, 0, KILL_PROCESS),
             (LOAD, 0, 0, CALL_NUMBER), (JUMP_IF_EQUAL, 1, 0, socket_call), (RETURN, 0, 0, ALLOW),
             (LOAD, 0, 0, FIRST_ARGUMENT)]
    for family in FAMILIES.values():
        steps += [(JUMP_IF_EQUAL, 0, 1, family), (RETURN, 0, 0, KILL_PROCESS)]
    return steps + [(RETURN, 0, 0, ALLOW)]


def holds(pid):
    """Whether each thread of a process is locked in."""
    folder = f"/proc/{pid}/task"
    found = 0
    for thread in os.listdir(folder):
        try:
            with open(os.path.join(folder, thread, "status"), encoding="ascii", errors="replace") as file:
                lines = file.read().splitlines()
        except (FileNotFoundError, ProcessLookupError):
            continue  # It has just ended.
        if f"Seccomp:\t{FILTER_MODE}" not in lines:
            return False
        found += 1
    return found > 0


def enter():
    """Locks the calling process in, for good. Meant for preexec_fn."""
    steps = _program()
    code = ctypes.create_string_buffer(b"".join(struct.pack("=HBBI", *step) for step in steps))

    class Filter(ctypes.Structure):
        _fields_ = [("length", ctypes.c_ushort), ("code", ctypes.c_void_p)]

    libc = ctypes.CDLL(None, use_errno=True)
    given = Filter(len(steps), ctypes.addressof(code))
    if libc.prctl(SET_NO_NEW_PRIVILEGES, 1, 0, 0, 0) != 0 or \
            libc.prctl(SET_FILTER, FILTER_MODE, ctypes.byref(given), 0, 0) != 0:
        raise OSError(ctypes.get_errno(), "the kernel takes no filter")
