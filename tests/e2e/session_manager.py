"""A session manager for tests: takes the programs that come to it (XSMP, by the system's libSM) and ends the session when it
is told to. Started as a program it prints the value of SESSION_MANAGER, a line for each program that has come, and
ends the session when its standard input closes."""
import ctypes
import select
import sys

sm = ctypes.CDLL("libSM.so.6")
ice = ctypes.CDLL("libICE.so.6")

Pointer = ctypes.c_void_p
NEW_CLIENT = ctypes.CFUNCTYPE(ctypes.c_int, Pointer, Pointer, ctypes.POINTER(ctypes.c_ulong), Pointer,
                              ctypes.POINTER(ctypes.c_char_p))
HOST_AUTHENTICATION = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_char_p)
IO_ERROR = ctypes.CFUNCTYPE(None, Pointer)

KINDS = 10  # of messages that a program may send
REGISTER, SAVE_DONE = 0, 5
ALL_KINDS = (1 << KINDS) - 1
SAVE_BOTH, INTERACT_NONE = 2, 0
CONNECTION_PENDING, MESSAGE_TAKEN = 0, 0

ice.IceAcceptConnection.restype = Pointer
ice.IceComposeNetworkIdList.restype = ctypes.c_char_p
ice.IceComposeNetworkIdList.argtypes = [ctypes.c_int, Pointer]
ice.IceAcceptConnection.argtypes = [Pointer, Pointer]
ice.IceGetListenConnectionNumber.argtypes = [Pointer]
for name in ("IceConnectionNumber", "IceConnectionStatus"):
    getattr(ice, name).argtypes = [Pointer]
ice.IceProcessMessages.argtypes = [Pointer, Pointer, Pointer]
ice.IceSetHostBasedAuthProc.argtypes = [Pointer, HOST_AUTHENTICATION]
ice.IceSetIOErrorHandler.argtypes = [IO_ERROR]
sm.SmsGenerateClientID.restype = Pointer
sm.SmsGenerateClientID.argtypes = [Pointer]
sm.SmsRegisterClientReply.argtypes = [Pointer, Pointer]
sm.SmsSaveYourself.argtypes = [Pointer, ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_int]
for name in ("SmsDie", "SmsSaveComplete"):
    getattr(sm, name).argtypes = [Pointer]
sm.SmsInitialize.argtypes = [ctypes.c_char_p, ctypes.c_char_p, NEW_CLIENT, Pointer, HOST_AUTHENTICATION, ctypes.c_int,
                             Pointer]


class Callbacks(ctypes.Structure):
    """SmsCallbacks: for each kind of message a procedure and what it is given."""
    _fields_ = [(f"{part}{number}", Pointer) for number in range(KINDS) for part in ("call", "data")]


class SessionManager:
    def __init__(self):
        self.clients = []
        self.saved = set()
        self.ending = False
        self.kept = []  # what the library calls has to stay
        self.admit = HOST_AUTHENTICATION(lambda host: 1)
        self.new_client = NEW_CLIENT(self.take)
        self.lost = IO_ERROR(lambda connection: None)  # the library's own ends this process
        ice.IceSetIOErrorHandler(self.lost)
        error = ctypes.create_string_buffer(256)
        if not sm.SmsInitialize(b"Tests", b"1", self.new_client, None, self.admit, 256, error):
            raise RuntimeError(error.value.decode())
        count = ctypes.c_int()
        self.places = ctypes.POINTER(Pointer)()
        if not ice.IceListenForConnections(ctypes.byref(count), ctypes.byref(self.places), 256, error):
            raise RuntimeError(error.value.decode())
        self.listeners = [self.places[number] for number in range(count.value)]
        for place in self.listeners:
            ice.IceSetHostBasedAuthProc(place, self.admit)
        addresses = ice.IceComposeNetworkIdList(count.value, self.places).decode().split(",")
        self.address = ",".join(address for address in addresses if address.startswith(("local/", "unix/")))
        self.connections = []

    def procedure(self, result, arguments, call):
        made = ctypes.CFUNCTYPE(result, Pointer, Pointer, *arguments)(call)
        self.kept.append(made)
        return ctypes.cast(made, Pointer)

    def take(self, client, _data, mask, callbacks, _reason):
        """The library's: a program has come; it is told what to call."""
        table = ctypes.cast(callbacks, ctypes.POINTER(Callbacks)).contents
        nothing = self.procedure(None, [Pointer, Pointer, Pointer], lambda *_: None)
        for number in range(KINDS):
            setattr(table, f"call{number}", nothing)
        setattr(table, f"call{REGISTER}", self.procedure(ctypes.c_int, [Pointer], self.register))
        setattr(table, f"call{SAVE_DONE}", self.procedure(None, [ctypes.c_int], self.save_done))
        mask[0] = ALL_KINDS
        return 1

    def register(self, client, _data, previous):
        if previous:
            return 0
        sm.SmsRegisterClientReply(client, sm.SmsGenerateClientID(client))
        self.clients.append(client)
        # Every new program is asked to save once, as the protocol tells.
        sm.SmsSaveYourself(client, SAVE_BOTH, 0, INTERACT_NONE, 0)
        print("registered", flush=True)
        return 1

    def save_done(self, client, _data, _success):
        if self.ending:
            self.saved.add(client)
        else:
            sm.SmsSaveComplete(client)

    def run(self):
        while True:
            watched = {ice.IceGetListenConnectionNumber(place): place for place in self.listeners}
            spoken = {ice.IceConnectionNumber(connection): connection for connection in self.connections}
            ready, _, _ = select.select([*watched, *spoken, *([] if self.ending else [sys.stdin])], [], [])
            for number in ready:
                if number is sys.stdin:
                    self.ending = True
                    for client in self.clients:
                        sm.SmsSaveYourself(client, SAVE_BOTH, 1, INTERACT_NONE, 0)
                elif number in watched:
                    status = ctypes.c_int()
                    connection = ice.IceAcceptConnection(watched[number], ctypes.byref(status))
                    while connection and ice.IceConnectionStatus(connection) == CONNECTION_PENDING:
                        ice.IceProcessMessages(connection, None, None)
                    self.connections.append(connection)
                elif ice.IceProcessMessages(spoken[number], None, None) != MESSAGE_TAKEN:
                    self.connections.remove(spoken[number])
            if self.ending and self.clients and self.saved >= set(self.clients):
                for client in self.clients:
                    sm.SmsDie(client)
                self.clients.clear()
            if self.ending and not self.connections:
                return


if __name__ == "__main__":
    manager = SessionManager()
    print(manager.address, flush=True)
    manager.run()
