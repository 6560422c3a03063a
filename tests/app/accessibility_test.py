#!/usr/bin/env python3
"""Kelmo as assistive technologies find it, through AT-SPI: every button has a name, the
search field is there by name, and the library's cards read as name, type and age.

Usage: accessibility_test.py <kelmo executable>, under xvfb-run and dbus-run-session.

Kelmo gets session and accessibility buses of its own: on a shared session bus a Kelmo
started by another test would take its files and quit, and shared accessibility bus
launchers listen at one path, so a session that ends takes the others' bus with it.
"""

import ctypes
import faulthandler
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

TIMEOUT = 45
POLL = 0.2
BUTTONS = {Atspi.Role.PUSH_BUTTON, Atspi.Role.TOGGLE_BUTTON}
# GTK 4.8 gives a control without a name its type's name instead.
TYPE_NAME = re.compile(r"(gtkmm__)?Gtk[A-Za-z]+")


def wait_for(what, condition):
    deadline = time.monotonic() + TIMEOUT
    while time.monotonic() < deadline:
        found = condition()
        if found:
            return found
        time.sleep(POLL)
    raise AssertionError(f"timed out waiting for {what}")


def nodes(root):
    """(node, role, name) for the root and every accessible below it, skipping those gone
    by the time they are asked (views come and go while the tree is read)."""
    pending = [root]
    while pending:
        node = pending.pop()
        try:
            role, name = node.get_role(), node.get_name() or ""
            children = [node.get_child_at_index(i) for i in range(node.get_child_count())]
        except GLib.Error:
            continue
        yield node, role, name
        pending.extend(child for child in children if child is not None)


def application_of(process):
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        app = desktop.get_child_at_index(index)
        if app is not None and app.get_process_id() == process.pid:
            app.set_cache_mask(Atspi.Cache.NONE)
            return app
    return None


def named(root, roles, pattern):
    for node, role, name in nodes(root):
        if role in roles and re.fullmatch(pattern, name):
            return node
    return None


def end_with_this_test():
    """Stops a child when this test ends, even on a timeout."""
    ctypes.CDLL(None).prctl(1, signal.SIGTERM)  # PR_SET_PDEATHSIG


def start_bus(address, *options):
    bus = subprocess.Popen(["dbus-daemon", "--nofork", "--print-address=1",
                            "--address=" + address, *options],
                           stdout=subprocess.PIPE, text=True, preexec_fn=end_with_this_test)
    if not bus.stdout.readline().strip():
        raise AssertionError("a bus did not start: " + " ".join(options))
    return bus


def start_accessibility_bus(directory):
    os.environ["AT_SPI_BUS_ADDRESS"] = "unix:path=" + os.path.join(directory, "a11y-bus")
    return start_bus(os.environ["AT_SPI_BUS_ADDRESS"],
                     "--config-file=/usr/share/defaults/at-spi2/accessibility.conf")


def stop_registry():
    """The registry our bus started outlives the bus unless told to go."""
    try:
        bus = Gio.DBusConnection.new_for_address_sync(
            os.environ["AT_SPI_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        reply = bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus",
                              "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                              GLib.Variant("(s)", ("org.a11y.atspi.Registry",)),
                              GLib.VariantType("(u)"), Gio.DBusCallFlags.NONE, 5000, None)
        os.kill(reply.unpack()[0], signal.SIGTERM)
    except GLib.Error:  # it never started
        pass


def stop(process):
    process.terminate()
    try:
        process.wait(timeout=10)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


def start_kelmo(executable, home, session_bus):
    downloads = os.path.join(home, "Downloads")
    config = os.path.join(home, ".config")
    os.makedirs(downloads)
    os.makedirs(os.path.join(config, "kelmo"))
    with open(os.path.join(config, "kelmo", "settings"), "w") as settings:
        settings.write("{'hasSeenOnboarding': <true>}\n")
    three_minutes_ago = time.time() - 180
    for name, text in [("dashboard.jsx", "export default () => <h1>Dashboard</h1>;\n"),
                       ("landing.html", "<h1>Landing</h1>\n")]:
        path = os.path.join(downloads, name)
        with open(path, "w") as artifact:
            artifact.write(text)
        os.utime(path, (three_minutes_ago, three_minutes_ago))

    environment = dict(os.environ, HOME=home, XDG_CONFIG_HOME=config,
                       XDG_DATA_HOME=os.path.join(home, ".local", "share"),
                       XDG_CACHE_HOME=os.path.join(home, ".cache"),
                       DBUS_SESSION_BUS_ADDRESS=session_bus, GSETTINGS_BACKEND="memory",
                       WEBKIT_DISABLE_DMABUF_RENDERER="1")
    environment.pop("GTK_A11Y", None)
    return subprocess.Popen([executable], env=environment, preexec_fn=end_with_this_test)


def check(executable):
    home = tempfile.mkdtemp(prefix="kelmo-a11y-")
    session_bus = "unix:path=" + os.path.join(home, "session-bus")
    buses = [start_bus(session_bus, "--session"), start_accessibility_bus(home)]
    kelmo = start_kelmo(executable, home, session_bus)
    try:
        app = wait_for("Kelmo on the accessibility bus", lambda: application_of(kelmo))
        window = wait_for("the main window", lambda: named(app, {Atspi.Role.FRAME}, "Kelmo"))

        # The newest file of Downloads opens at start; the sidebar's row leads back.
        library = wait_for("the Library row", lambda: named(
            window, BUTTONS, r"Library, 2 artifacts"))
        library.do_action(0)
        wait_for("a card that reads as name, type and age", lambda: named(
            window, {Atspi.Role.TABLE_CELL}, r"dashboard, JSX, modified 3 \S+ ago"))
        wait_for("the player to give way", lambda: named(
            window, BUTTONS, "Back to Library") is None)

        search = named(window, {Atspi.Role.ENTRY, Atspi.Role.TEXT}, r"Search")
        assert search is not None, "no search field named Search"

        unnamed = [f"{role.value_nick} {name!r}" for _, role, name in nodes(window)
                   if role in BUTTONS and (not name or TYPE_NAME.fullmatch(name))]
        assert not unnamed, "buttons without a name: " + ", ".join(unnamed)
    finally:
        stop(kelmo)
        stop_registry()
        for bus in buses:
            stop(bus)
        shutil.rmtree(home, ignore_errors=True)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    faulthandler.dump_traceback_later(2 * TIMEOUT, exit=True)
    check(sys.argv[1])
    print("ok")
