"""A bare Debian in a folder of its own, made by debootstrap once and kept in the build folder. What the package asks
for is installed there by apt, without what is only recommended; the package comes and goes with each test."""
import ctypes
import os
import shutil
import subprocess

import debian

NEW_MOUNTS = 0x00020000  # CLONE_NEWNS of the kernel's headers
MOUNTS = ("proc", "dev/shm")
SECONDS = 300  # that anything with the archive may take: 45 on an idle machine
ENVIRONMENT = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "DEBIAN_FRONTEND": "noninteractive", "LC_ALL": "C.UTF-8"}
ENVIRONMENT.update((name, value) for name, value in os.environ.items() if name.lower().endswith("_proxy"))


class NoRoot(Exception):
    """Why none can be made here."""


def system():
    """What this machine calls its system."""
    with open("/etc/os-release", encoding="utf-8") as file:
        told = dict(row.rstrip().split("=", 1) for row in file if "=" in row)
    return {name: value.strip('"') for name, value in told.items()}


def archive():
    """Code name of this Debian, and the address that its own apt takes it from."""
    if system().get("ID") != "debian":
        raise NoRoot("this is no Debian")
    name = system()["VERSION_CODENAME"]
    rows = subprocess.run(["apt-get", "indextargets", "--format", "$(CODENAME) $(SUITE) $(COMPONENT) $(SITE)", "Created-By: Packages"],
                          capture_output=True, text=True).stdout.split("\n")
    for row in rows:
        words = row.split()
        if words[:1] == [name] and "main" in words:
            return name, words[-1]
    raise NoRoot(f"apt knows no archive of {name}")


class BareRoot:
    def __init__(self, folder):
        self.folder = folder
        self.base = os.path.join(folder, "bare")
        self.asked = os.path.join(folder, "asked")  # what is installed, written when it is

    def make(self):
        """Without a network a finished root does, as long as the package asks for the same. When it asks for other things,
        those that were there before must not help it."""
        wanted = debian.field("Depends")
        if wanted != self.has_what_is_asked_for():
            shutil.rmtree(self.base, ignore_errors=True)
        if not os.path.exists(self.base):
            self.bootstrap()
        self.mount()
        if os.path.exists(os.path.join(self.base, "var/lib/dpkg/info/quavernet.list")):
            self.purge()  # A test was broken off.
        if wanted != self.has_what_is_asked_for():
            self.satisfy(wanted)

    def has_what_is_asked_for(self):
        if not os.path.exists(self.asked):
            return None
        with open(self.asked, encoding="utf-8") as file:
            return file.read()

    def bootstrap(self):
        if os.geteuid() != 0 or not shutil.which("debootstrap", path=ENVIRONMENT["PATH"]):
            raise NoRoot("it takes root and debootstrap")
        name, address = archive()
        begun = self.base + ".begun"
        shutil.rmtree(begun, ignore_errors=True)
        os.makedirs(self.folder, exist_ok=True)
        try:
            subprocess.run(["debootstrap", "--variant=minbase", name, begun, address], check=True, timeout=SECONDS,
                           capture_output=True, text=True, env=ENVIRONMENT)
        except (subprocess.CalledProcessError, subprocess.TimeoutExpired) as failure:
            raise NoRoot(f"debootstrap: {(failure.stdout or '')[-500:]}") from failure
        os.rename(begun, self.base)

    def satisfy(self, wanted):
        # The names of servers are those of this machine. What is unpacked need not survive a power cut.
        for name in ("resolv.conf", "hosts"):
            shutil.copy(os.path.join("/etc", name), os.path.join(self.base, "etc"))
        try:
            self.run("apt-get", "update", "-q", "-o", "APT::Update::Error-Mode=any")
        except AssertionError as failure:
            raise NoRoot(f"no archive: {failure}") from failure
        self.run("apt-get", "satisfy", "-q", "-y", "--no-install-recommends", "-o", "Dpkg::Options::=--force-unsafe-io", wanted)
        self.run("apt-get", "clean")
        with open(self.asked, "w", encoding="utf-8") as file:
            file.write(wanted)

    def mount(self):
        """What a running system has beside its files. Only this process and its children see it, and it goes with them."""
        if ctypes.CDLL(None, use_errno=True).unshare(NEW_MOUNTS) != 0:
            raise NoRoot("no mounts of our own")
        wanted = [["--make-rprivate", "/"]]
        wanted += [["-t", kind, kind, os.path.join(self.base, place)] for kind, place in zip(("proc", "tmpfs"), MOUNTS)]
        for words in wanted:
            if subprocess.run(["mount", *words]).returncode != 0:
                raise NoRoot("no mounts of our own")

    def run(self, *command):
        done = subprocess.run(["chroot", self.base, *command], env=ENVIRONMENT, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=SECONDS)
        if done.returncode != 0:
            raise AssertionError(f"{' '.join(command)}: {done.stdout[-3000:]}")
        return done.stdout

    def install(self):
        """By dpkg alone: it fetches nothing, and fails if the package asks for anything that is not there."""
        shutil.copy(debian.package(), os.path.join(self.base, "quavernet.deb"))
        try:
            self.run("dpkg", "--install", "/quavernet.deb")
        finally:
            os.remove(os.path.join(self.base, "quavernet.deb"))

    def purge(self):
        self.run("dpkg", "--purge", "quavernet")

    def tree(self):
        """Everything below the root, with type, rights, owner and what links point to."""
        found = {}
        for folder, folders, names in os.walk(self.base):
            folders[:] = [name for name in folders if os.path.relpath(os.path.join(folder, name), self.base) not in MOUNTS]
            for name in folders + names:
                path = os.path.join(folder, name)
                told = os.lstat(path)
                link = os.readlink(path) if os.path.islink(path) else ""
                found[os.path.relpath(path, self.base)] = (told.st_mode, told.st_uid, told.st_gid, link)
        return found
