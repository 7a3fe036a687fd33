#!/usr/bin/python3
"""The desktop's portal for file dialogs, for tests: takes the program's requests on the session's bus. Started as a
program with "answer PATH" it gives that path to each request, with "cancel" it refuses each, with "wait" it leaves all without
an answer. It prints a line when it is there, and one for each request: the method and the title."""
import sys

from gi.repository import Gio, GLib

NAME, PLACE, CHOOSER = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", "org.freedesktop.portal.FileChooser"
REQUEST = "org.freedesktop.portal.Request"
ANSWERED, CANCELLED = 0, 1

METHOD = """<method name="%s"><arg type="s" name="parent" direction="in"/><arg type="s" name="title" direction="in"/>
<arg type="a{sv}" name="options" direction="in"/><arg type="o" name="handle" direction="out"/></method>"""
DESCRIPTION = (f'<node><interface name="{CHOOSER}">' + METHOD % "OpenFile" + METHOD % "SaveFile" +
               '<property name="version" type="u" access="read"/></interface></node>')


class Portal:
    def __init__(self, mode, path=None):
        self.mode = mode
        self.path = path
        self.count = 0
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        interface = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0]
        self.bus.register_object(PLACE, interface, self.asked, lambda *_: GLib.Variant("u", 3), None)
        Gio.bus_own_name_on_connection(self.bus, NAME, Gio.BusNameOwnerFlags.NONE,
                                       lambda *_: print("there", flush=True), None)

    def asked(self, _bus, sender, _place, _interface, method, arguments, invocation):
        _, title, options = arguments.unpack()
        print(method, title, flush=True)
        self.count += 1
        token = options.get("handle_token", f"t{self.count}")
        request = f"{PLACE}/request/{sender[1:].replace('.', '_')}/{token}"
        invocation.return_value(GLib.Variant("(o)", (request,)))
        if self.mode != "wait":
            GLib.timeout_add(100, self.respond, sender, request)

    def respond(self, sender, request):
        results = {"uris": GLib.Variant("as", [GLib.filename_to_uri(self.path)])} if self.mode == "answer" else {}
        code = ANSWERED if self.mode == "answer" else CANCELLED
        self.bus.emit_signal(sender, request, REQUEST, "Response", GLib.Variant("(ua{sv})", (code, results)))
        return False


if __name__ == "__main__":
    portal = Portal(*sys.argv[1:])
    GLib.MainLoop().run()
