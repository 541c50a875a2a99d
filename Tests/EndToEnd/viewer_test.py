#!/usr/bin/env python3
"""The viewer as people use it. Each function test_... is a test; what it is about, its name says.

    viewer_test.py FUNCTION BIN_FOLDER DROP_PROGRAM
"""
import json
import os
import pathlib
import shutil
import socket
import struct
import subprocess
import sys
import tempfile
import time
import zlib

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE / "Tools"))
from viewer_driver import Failure, Screen, Viewer, wait_until  # noqa: E402

MODELS = SOURCE / "Models"
PAVILION = str(MODELS / "pavilion.obj")
BUILDING = str(MODELS / "building.obj")
SIZE = (1000, 700)

RECORDING = """tolvanite-events 1
camera perspective 45
from 0 2 20
at 0 1 0
up 0 1 0
motion-factor 1
rotation-angle 0.05
click-center off
no-intersect off
0.5 press 0 500 350
0.6 release 0 500 350
0.7 press 0 400 300
0.8 move 440 330
0.9 release 0 440 330
1.0 press 0 500 350
1.1 release 0 500 350
"""
START_IN_THE_BUILDING = """tolvanite-events 1
camera perspective 60
from -3.2 1.65 -3.3
at 0 1.65 -3.3
up 0 1 0
motion-factor 1
rotation-angle 0.05
click-center off
no-intersect off
0 hover 500 350
"""


class Bench:
    """Where the programs are."""

    def __init__(self, folder, drop):
        self.viewer = os.path.join(folder, "tolvanite-view")
        self.tool = os.path.join(folder, "tolvanite")
        self.dropper = drop

    def open(self, screen, *words, **options):
        options.setdefault("size", SIZE)
        return Viewer(screen, self.viewer, words, **options)

    def select(self, model, lines):
        """What `tolvanite select` answers to the questions of a report."""
        text = "".join(json.dumps(line["asked"]) + "\n" for line in lines)
        done = subprocess.run([self.tool, "select", model, "--queries", "-"], input=text, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
        return [json.loads(line) for line in done.stdout.splitlines()]

    def check_answers(self, model, lines):
        """Every answer of the report is that of `tolvanite select` on the same view."""
        answers = self.select(model, lines)
        equal(len(answers), len(lines), "answers")
        for line, answer in zip(lines, answers):
            equal(answer.get("error"), None, "an error of select")
            for key in ("hits", "count", "complete"):
                equal(line[key], answer[key], f"{key} of {line['asked']}")

    def drop(self, viewer, *files):
        done = subprocess.run([self.dropper, viewer.window, *files], timeout=60, check=False,
                              env={**os.environ, "DISPLAY": viewer.screen.display})
        equal(done.returncode, 0, "exit status of the drop")


def equal(found, wanted, what):
    if found != wanted:
        raise Failure(f"{what}: {found!r} in place of {wanted!r}")


def holds(condition, what):
    if not condition:
        raise Failure(f"not so: {what}")


def read_png(path):
    """Width, height and rows of red, green and blue of a PNG file with 8 bits and no interlace."""
    data = pathlib.Path(path).read_bytes()
    equal(data[:8], b"\x89PNG\r\n\x1a\n", "the head of a PNG file")
    width, height, depth, kind = struct.unpack(">IIBB", data[16:26])
    equal((depth, kind), (8, 2), "the format of the pixels")
    packed, at = b"", 8
    while at < len(data):
        length, name = struct.unpack(">I4s", data[at:at + 8])
        packed += data[at + 8:at + 8 + length] if name == b"IDAT" else b""
        at += 12 + length
    raw = zlib.decompress(packed)
    rows, before = [], bytearray(3 * width)
    for y in range(height):
        line = raw[y * (3 * width + 1):(y + 1) * (3 * width + 1)]
        before = unfiltered(line[0], bytearray(line[1:]), before)
        rows.append(before)
    return width, height, rows


def unfiltered(method, row, above):
    """A row of a PNG file by its filter: none, sub, up, average or Paeth."""
    for i, byte in enumerate(row):
        left = row[i - 3] if i >= 3 else 0
        corner = above[i - 3] if i >= 3 else 0
        if method == 4:
            guess = left + above[i] - corner
            near = min((abs(guess - left), 0, left), (abs(guess - above[i]), 1, above[i]),
                       (abs(guess - corner), 2, corner))[2]
        else:
            near = (0, left, above[i], (left + above[i]) // 2)[method]
        row[i] = (byte + near) & 0xFF
    return row


def count_orange(rows):
    """Pixels in the colour of what is selected."""
    return sum(row[i] > 90 and row[i + 1] < row[i] * 0.75 and row[i + 2] < row[i] * 0.25
               for row in rows for i in range(0, len(row), 3))


# --- tests ---

def test_a_click_picks_what_select_picks(bench):
    with Screen() as screen, bench.open(screen, PAVILION) as viewer:
        viewer.wait_for_title("pavilion.obj")
        for count, (x, y) in enumerate([(500, 350), (430, 300), (620, 410), (5, 690)], 1):
            viewer.click(x, y)
            viewer.wait_for_lines(count)
        lines = viewer.lines()
        equal([line["event"] for line in lines], ["pick"] * 4, "events")
        holds(lines[0]["count"] > 0, "a hit in the middle of the model")
        equal(lines[3]["count"], 0, "hits beside the model")
        bench.check_answers(PAVILION, lines)
        equal(viewer.quit(), 0, "exit status")


def test_bands_take_what_they_touch_to_the_left_and_what_lies_inside_to_the_right(bench):
    with Screen() as screen, bench.open(screen, PAVILION) as viewer:
        viewer.wait_for_title("pavilion.obj")
        viewer.key("shift+b")
        viewer.drag((300, 200), (500, 400), (700, 500))
        viewer.wait_for_lines(1)
        viewer.drag((700, 500), (500, 400), (300, 200))
        inside, touched = viewer.wait_for_lines(2)
        equal((inside["event"], touched["event"]), ("band", "band"), "events")
        equal(inside["asked"]["rect"], [300, 200, 700, 500], "the band")
        equal(touched["asked"]["rect"], [300, 200, 700, 500], "the band")
        holds(inside["asked"].get("enclosed"), "a band to the right encloses")
        holds(not touched["asked"].get("enclosed"), "a band to the left touches")
        holds(touched["count"] > inside["count"] > 0, "more is touched than lies inside")
        bench.check_answers(PAVILION, [inside, touched])


def test_a_lasso_and_the_view_after_an_orbit_give_what_select_gives(bench):
    with Screen() as screen, bench.open(screen, PAVILION) as viewer:
        viewer.wait_for_title("pavilion.obj")
        viewer.click(500, 350)
        before = viewer.wait_for_lines(1)[0]["asked"]["from"]
        viewer.drag((400, 300), (450, 310), (520, 330))  # orbits
        viewer.drag((400, 300), (420, 330), button=2)  # pans
        viewer.drag((400, 300), (400, 340), button=3)  # zooms
        viewer.key("shift+l")
        viewer.drag((300, 200), (700, 250), (650, 500), (350, 480), (500, 150))
        lasso = viewer.wait_for_lines(2)[1]
        equal(lasso["event"], "lasso", "event")
        holds(lasso["asked"]["from"] != before, "the eye has moved")
        viewer.key("p")  # without perspective
        viewer.drag((300, 200), (700, 250), (650, 500))
        flat = viewer.wait_for_lines(3)[2]
        holds("ortho" in flat["asked"], "the view has no perspective")
        bench.check_answers(PAVILION, viewer.lines())


def test_the_wheel_keeps_what_is_under_the_pointer(bench):
    with Screen() as screen, bench.open(screen, PAVILION) as viewer:
        viewer.wait_for_title("pavilion.obj")
        viewer.click(430, 330)
        before = viewer.wait_for_lines(1)[0]
        for _ in range(5):
            viewer.click(430, 330, button=4)
        viewer.click(430, 330)
        after = viewer.wait_for_lines(2)[1]
        equal(after["hits"][0]["node"], before["hits"][0]["node"], "the node under the pointer")
        holds(after["hits"][0]["eyeDistance"] < before["hits"][0]["eyeDistance"] / 2,
              "the eye is nearer")


def test_a_dropped_file_is_shown_and_a_broken_one_leaves_what_is_shown(bench):
    with Screen() as screen, bench.open(screen) as viewer:
        bench.drop(viewer, PAVILION)
        viewer.wait_for_title("pavilion.obj")
        broken = os.path.join(viewer.folder, "broken.osb")
        pathlib.Path(broken).write_bytes(b"no scene")
        bench.drop(viewer, broken)
        time.sleep(1)
        holds("pavilion.obj" in viewer.title(), "the scene of before is shown")
        viewer.click(500, 350)
        holds(viewer.wait_for_lines(1)[0]["count"] > 0, "it can be picked")
        bench.drop(viewer, BUILDING)
        viewer.wait_for_title("building.obj")
        equal(viewer.quit(), 0, "exit status")
        holds("broken.osb" in viewer.log_text(), "a line about the broken file")


def test_a_screenshot_shows_what_render_shows_and_the_program_ends(bench):
    with Screen() as screen, tempfile.TemporaryDirectory() as folder:
        shot, wanted = (os.path.join(folder, name) for name in ("shot.png", "wanted.png"))
        events = os.path.join(folder, "still.events")
        pathlib.Path(events).write_text("".join(RECORDING.splitlines(True)[:9]), encoding="utf-8")
        with bench.open(screen, PAVILION, "--play", events, "--screenshot", shot, "--exit",
                        settings={"samples": 0, "dark": False}) as viewer:
            equal(viewer.wait_for_end(), 0, "exit status")
        subprocess.run([bench.tool, "render", PAVILION, "-o", wanted, "--from", "0,2,20", "--at",
                        "0,1,0", "--background", "0.93,0.94,0.96", "--size",
                        f"{SIZE[0]}x{SIZE[1]}"], stdout=subprocess.DEVNULL, check=True)
        pictures = [read_png(name) for name in (shot, wanted)]
        equal([picture[:2] for picture in pictures], [SIZE, SIZE], "the sizes of the pictures")
        different = sum(abs(a - b) > 3 for rows in zip(pictures[0][2], pictures[1][2])
                        for a, b in zip(*rows))
        # The two contexts may choose otherwise at edges.
        holds(different < 0.002 * 3 * SIZE[0] * SIZE[1], f"{different} bytes differ")


def test_what_is_selected_is_shown_and_hidden_parts_are_not_picked(bench):
    with Screen() as screen, bench.open(screen, PAVILION) as viewer:
        viewer.wait_for_title("pavilion.obj")
        before = count_orange(screen.picture(*SIZE))
        viewer.click(500, 350)
        first = viewer.wait_for_lines(1)[0]["hits"][0]["node"]
        wait_until("the colour of what is selected",
                   lambda: count_orange(screen.picture(*SIZE)) > before + 1000)
        viewer.key("h")
        wait_until("the end of that colour",
                   lambda: count_orange(screen.picture(*SIZE)) <= before + 1000)
        viewer.click(500, 350)
        second = viewer.wait_for_lines(2)[1]["hits"]
        holds(all(hit["node"] != first for hit in second), "what is hidden is not picked")
        viewer.key("a")
        viewer.click(500, 350)
        equal(viewer.wait_for_lines(3)[2]["hits"][0]["node"], first, "after all is shown again")


def test_a_file_that_changes_is_read_again_and_one_that_vanishes_stays(bench):
    with Screen() as screen, tempfile.TemporaryDirectory() as folder:
        model = os.path.join(folder, "model.obj")
        triangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"
        pathlib.Path(model).write_text(triangle, encoding="utf-8")
        with bench.open(screen, model) as viewer:
            viewer.wait_for_title("model.obj")
            viewer.key("1")
            time.sleep(1)

            def depth():
                count = len(viewer.lines())
                viewer.click(480, 360)
                return viewer.wait_for_lines(count + 1)[-1]["hits"][0]["point"][2]

            equal(depth(), 0, "the depth of the triangle")
            pathlib.Path(model).write_text(triangle.replace(" 0\nv", " 0.25\nv")
                                           .replace(" 0\nf", " 0.25\nf"), encoding="utf-8")
            wait_until("the changed file", lambda: depth() == 0.25)
            os.unlink(model)
            time.sleep(2)
            equal(depth(), 0.25, "the depth of the triangle of the file that has vanished")
            equal(viewer.quit(), 0, "exit status")


def test_an_idle_window_uses_no_processor(bench):
    with Screen() as screen, bench.open(screen, PAVILION) as viewer:
        viewer.wait_for_title("pavilion.obj")
        time.sleep(2)
        before = viewer.cpu_seconds()
        time.sleep(5)
        used = viewer.cpu_seconds() - before
        holds(used < 0.1, f"{used} s of 5 are less than 2 %")


def test_focus_that_is_lost_in_a_drag_ends_the_drag(bench):
    with Screen() as screen, bench.open(screen, PAVILION) as viewer:
        viewer.wait_for_title("pavilion.obj")
        viewer.key("shift+b")
        viewer.move(300, 200)
        viewer.act("mousedown", 1)
        viewer.move(600, 400)
        viewer.act("windowfocus", 1)
        viewer.act("mouseup", 1)
        viewer.act("windowfocus", "--sync", viewer.window)
        time.sleep(0.3)
        equal(viewer.lines(), [], "lines of the report")
        viewer.drag((300, 200), (500, 300), (600, 400))
        equal(viewer.wait_for_lines(1)[0]["event"], "band", "the next drag")


def test_the_smallest_window_and_a_large_one_show_the_scene(bench):
    with Screen() as screen, bench.open(screen, PAVILION, "--verbose") as viewer:
        viewer.wait_for_title("pavilion.obj")
        for size in [(1, 1), (2, 600), (1200, 3), SIZE]:
            viewer.act("windowsize", "--sync", viewer.window, *size)
            time.sleep(0.2)
        viewer.click(500, 350)
        line = viewer.wait_for_lines(1)[0]
        equal(line["asked"]["size"], list(SIZE), "the size of the window")
        equal(viewer.quit(), 0, "exit status")
        holds("OpenGL:" not in viewer.log_text(), "no error of OpenGL")


def test_without_a_display_one_line_says_so(bench):
    environment = {**os.environ, "DISPLAY": ":9999"}
    environment.pop("WAYLAND_DISPLAY", None)
    done = subprocess.run([bench.tool, "view", PAVILION], env=environment, text=True, check=False,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=60)
    equal(done.returncode, 1, "exit status")
    equal(done.stdout, "", "standard output")
    equal(done.stderr.count("\n"), 1, "lines")
    holds(done.stderr.startswith("tolvanite: no window: "), done.stderr)


def test_without_opengl_one_line_says_so(bench):
    with Screen(words=("-extension", "GLX")) as screen:
        done = subprocess.run([bench.viewer, PAVILION], text=True, check=False, timeout=60,
                              env={**os.environ, "DISPLAY": screen.display},
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        equal(done.returncode, 1, "exit status")
        equal(done.stderr.count("\n"), 1, "lines")
        holds(done.stderr.startswith("tolvanite: no window: "), done.stderr)


def test_without_the_viewer_one_line_says_so(bench):
    with tempfile.TemporaryDirectory() as folder:
        alone = shutil.copy(bench.tool, folder)
        libraries = os.path.join(os.path.dirname(os.path.dirname(bench.tool)), "lib")
        done = subprocess.run([alone, "view"], text=True, check=False, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, timeout=60,
                              env={**os.environ, "PATH": folder, "LD_LIBRARY_PATH": libraries})
        equal(done.returncode, 1, "exit status")
        equal(done.stderr.count("\n"), 1, "lines")
        holds("tolvanite: no viewer: tolvanite-view is not installed" in done.stderr, done.stderr)


def test_a_played_recording_gives_the_poses_of_replay_and_its_clicks_pick(bench):
    with Screen() as screen, tempfile.TemporaryDirectory() as folder:
        events = os.path.join(folder, "drag.events")
        pathlib.Path(events).write_text(RECORDING, encoding="utf-8")
        with bench.open(screen, PAVILION, "--play", events, "--exit") as viewer:
            equal(viewer.wait_for_end(), 0, "exit status")
            lines = viewer.lines()
        done = subprocess.run([bench.tool, "replay", PAVILION, events, "--engine", "cad", "--size",
                               f"{SIZE[0]}x{SIZE[1]}", "--json"], stdout=subprocess.PIPE, text=True,
                              check=True)
        last = json.loads(done.stdout)["poses"][-1]
        equal(len(lines), 2, "clicks")
        for key in ("from", "at", "up"):
            equal(lines[1]["asked"][key], last[key], key)
        bench.check_answers(PAVILION, lines)


def test_what_a_user_does_is_recorded_and_gives_the_same_answers_when_it_is_played(bench):
    with Screen() as screen, bench.open(screen, PAVILION) as viewer:
        viewer.wait_for_title("pavilion.obj")
        viewer.key("ctrl+r")
        viewer.drag((400, 300), (450, 310), (520, 330))
        viewer.key("2")  # from behind
        time.sleep(0.6)
        viewer.click(480, 340, button=4)
        viewer.click(500, 350)
        viewer.key("shift+b")
        viewer.drag((350, 200), (500, 400), (650, 500))
        viewer.wait_for_lines(2)
        viewer.key("ctrl+r")
        events = os.path.join(viewer.folder, "state", "tolvanite", "last.events")
        wait_until("the recording", lambda: os.path.exists(events))
        recorded = viewer.lines()
        viewer.key("shift+n")
        viewer.drag((400, 300), (420, 380))
        viewer.key("ctrl+p")
        played = viewer.wait_for_lines(4)[2:]
        for before, after in zip(recorded, played):
            equal(after["asked"], before["asked"], "the question")
            equal(after["hits"], before["hits"], "the answer")
        bench.check_answers(PAVILION, played)


def test_a_person_walks_by_the_keys_and_marks_are_saved_with_the_scene(bench):
    with Screen() as screen, tempfile.TemporaryDirectory() as folder:
        events = os.path.join(folder, "start.events")
        pathlib.Path(events).write_text(START_IN_THE_BUILDING, encoding="utf-8")
        with bench.open(screen, BUILDING, "--engine", "walk", "--play", events) as viewer:
            viewer.wait_for_title("building.obj")
            time.sleep(0.5)
            viewer.key("ctrl+m")
            start = pick_from(viewer)
            viewer.act("keydown", "w")
            time.sleep(0.5)
            viewer.act("keyup", "w")
            time.sleep(0.2)
            there = pick_from(viewer)
            holds(there[0] > start[0] + 0.2, f"the person has walked on from {start} to {there}")
            equal(there[1], start[1], "the height of the eye")
            viewer.key("ctrl+m")
            viewer.key("ctrl+1")
            time.sleep(0.2)
            # A click is a short step, too.
            back = pick_from(viewer)
            holds(abs(back[0] - start[0]) < 0.05, f"the first mark at {start}, not at {back}")
            holds(viewer.title().startswith("*"), "the title shows that there are changes")
            saved = save_as(viewer, "walked.osb")
            viewer.wait_for_title("walked.osb")
            holds(not viewer.title().startswith("*"), "there are none after they are saved")
            done = subprocess.run([bench.tool, "dump", saved["out"], "--json"], text=True,
                                  stdout=subprocess.PIPE, check=True)
        holds("WalkConsoleAttachment" in done.stdout, "the marks are in the file")


def pick_from(viewer):
    """Where the eye is, by a click beside the scene's middle."""
    count = len(viewer.lines())
    viewer.click(500, 350)
    return viewer.wait_for_lines(count + 1)[-1]["asked"]["from"]


def save_as(viewer, name):
    """Saves in the viewer's folder by the dialog; the line of the report."""
    count = len(viewer.lines())
    viewer.key("ctrl+s")
    time.sleep(0.3)
    viewer.key("ctrl+a")
    viewer.type(os.path.join(viewer.folder, name))
    viewer.key("Return")
    line = viewer.wait_for_lines(count + 1)[-1]
    equal(line["event"], "saved", "event")
    holds(os.path.getsize(line["out"]) > 0, "a file")
    return line


def test_a_saved_file_is_what_convert_writes(bench):
    with Screen() as screen, bench.open(screen, PAVILION) as viewer:
        viewer.wait_for_title("pavilion.obj")
        line = save_as(viewer, "saved.obj")
        holds("pavilion.obj" in viewer.title(), "an OBJ file does not hold all of the scene")
        target = os.path.join(viewer.folder, "converted.obj")
        done = subprocess.run([bench.tool, "convert", PAVILION, target, "--json"], text=True,
                              stdout=subprocess.PIPE, check=True)
        converted = json.loads(done.stdout)
        for key in ("in", "nodesBefore", "nodesAfter", "complete"):
            equal(line[key], converted[key], key)
        text = pathlib.Path(line["out"]).read_text(encoding="utf-8")
        wanted = pathlib.Path(target).read_text(encoding="utf-8")
        equal(text.replace("saved.mtl", ""), wanted.replace("converted.mtl", ""), "the text")


def test_changes_are_not_thrown_away_without_a_question(bench):
    with Screen() as screen, bench.open(screen, PAVILION) as viewer:
        viewer.wait_for_title("pavilion.obj")
        viewer.key("ctrl+m")
        wait_until("a change", lambda: viewer.title().startswith("*"))
        viewer.key("ctrl+q")
        time.sleep(0.5)
        viewer.key("Escape")
        time.sleep(0.5)
        equal(viewer.process.poll(), None, "the viewer has stayed")
        viewer.key("F5")
        time.sleep(0.5)
        viewer.key("Escape")
        time.sleep(0.5)
        holds(viewer.title().startswith("*"), "the change is still there")
        viewer.key("F5")
        time.sleep(0.5)
        viewer.key("Delete")
        wait_until("the file of before", lambda: not viewer.title().startswith("*"))
        viewer.key("ctrl+q")
        equal(viewer.wait_for_end(), 0, "exit status")


def test_what_changes_without_an_event_is_drawn(bench):
    with Screen() as screen, tempfile.TemporaryDirectory() as folder:
        model = shutil.copy(MODELS / "plant.osb", folder)
        with bench.open(screen, model) as viewer:
            viewer.wait_for_title("plant.osb")
            time.sleep(1)
            before = screen.picture(*SIZE)[SIZE[1] - 12]
            pathlib.Path(model).write_bytes(b"no scene any more")
            wait_until("the line at the bottom",
                       lambda: screen.picture(*SIZE)[SIZE[1] - 12] != before)
            holds("cannot read" in viewer.log_text(), "a line")


def test_a_report_that_cannot_be_written_is_one_line_and_a_failure(bench):
    with Screen() as screen, tempfile.TemporaryDirectory() as folder:
        events = os.path.join(folder, "drag.events")
        pathlib.Path(events).write_text(RECORDING, encoding="utf-8")
        done = subprocess.run([bench.viewer, PAVILION, "--size", "1000x700", "--play", events,
                               "--report", "/dev/full", "--exit"], text=True, check=False,
                              env={**os.environ, "DISPLAY": screen.display,
                                   "XDG_CONFIG_HOME": folder, "XDG_STATE_HOME": folder},
                              timeout=60, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        equal(done.returncode, 1, "exit status")
        equal(done.stderr, "tolvanite: cannot write the report\n", "standard error")
        equal(os.listdir(folder), ["drag.events"], "no settings were written")


def test_a_3d_mouse_moves_the_view_and_its_daemon_may_end(bench):
    with Screen() as screen, tempfile.TemporaryDirectory() as folder:
        daemon = socket.socket(socket.AF_UNIX)
        daemon.bind(os.path.join(folder, "spnav"))
        daemon.listen()
        os.environ["SPNAV_SOCKET"] = os.path.join(folder, "spnav")
        with bench.open(screen, PAVILION) as viewer:
            del os.environ["SPNAV_SOCKET"]
            connection, _ = daemon.accept()
            viewer.wait_for_title("pavilion.obj")
            before = pick_from(viewer)
            for push in (300, 0):
                connection.sendall(struct.pack("=8i", 0, push, 0, 0, 0, 0, 0, 16))
                time.sleep(0.5)
            after = pick_from(viewer)
            holds(after != before, "the cap moves the view")
            equal(pick_from(viewer), after, "at rest it stands still")
            connection.close()
            time.sleep(0.5)
            used = viewer.cpu_seconds()
            time.sleep(2)
            holds(viewer.cpu_seconds() - used < 0.1, "without the daemon the window is idle")
            equal(viewer.quit(), 0, "exit status")


def main():
    function, folder, drop = sys.argv[1:4]
    bench = Bench(os.path.abspath(folder), os.path.abspath(drop))
    try:
        globals()[function](bench)
    except Failure as failure:
        print(f"{function}: {failure}", file=sys.stderr)
        sys.exit(1)


if __name__ == "__main__":
    main()
