"""The made package, read and unpacked with Debian's own tools."""
import glob
import os
import subprocess


def package():
    """The newest one that cpack has made; CMake names the folder."""
    found = glob.glob(os.path.join(os.environ["QUAVERNET_PACKAGES"], "quavernet_*.deb"))
    if not found:
        raise AssertionError("no package has been made")
    return max(found, key=os.path.getmtime)


def told(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def field(name):
    return told("dpkg-deb", "--field", package(), name).strip()


def unpack(folder):
    subprocess.run(["dpkg-deb", "--extract", package(), folder], check=True)


def missing_helpers(system):
    """What no link of the program tells of and its package has to ask for by name: Qt's plugins and texts, the media
    engine, programs that it starts. Those that are not there."""
    wanted = ["lib/*/qt6/plugins/iconengines/libqsvgicon.so", "share/qt6/translations/qtbase_de.qm"]
    wanted += [f"lib/*/qt6/plugins/imageformats/libq{kind}.so" for kind in ("svg", "jpeg", "gif", "webp")]
    wanted += ["lib/*/libmpv.so.2", "share/icons/hicolor/index.theme", "bin/lame", "bin/python3", "bin/xdg-open"]
    return [name for name in wanted if not glob.glob(os.path.join(system, "usr", name))]
