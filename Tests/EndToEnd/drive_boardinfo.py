"""Does to a running boardinfo what a test of whole runs cannot, and tells what came of it. On a board:

    drive_boardinfo.py signal NAME BOARDINFO   ends a watch after two reports
    drive_boardinfo.py hang-up BOARDINFO       reads one report of a watch and goes away
    drive_boardinfo.py files BOARDINFO         starts it with its standard descriptors closed

and, because a board has no pseudo-terminals, with the board among the words:

    drive_boardinfo.py terminal BOARDSIM run -- BOARDINFO   watches on a terminal of 20 lines, and reports once
"""

import fcntl
import json
import os
import pty
import signal
import struct
import subprocess
import sys
import termios


def reports(stream, count):
    return [json.loads(stream.readline()) for _ in range(count)]


def end_by_signal(name, program):
    with subprocess.Popen([program, "--json", "--watch", "0.1"], stdout=subprocess.PIPE) as running:
        reports(running.stdout, 2)
        running.send_signal(getattr(signal, name))
        rest = [json.loads(line) for line in running.stdout]
        print("whole reports:", all(report["schema"] == 1 for report in rest), "status:", running.wait())


def hang_up(program):
    with subprocess.Popen([program, "--json", "--watch", "0.1"], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE) as running:
        reports(running.stdout, 1)
        running.stdout.close()
        print("status:", running.wait(), "said:", running.stderr.read().decode())


def on_terminal(words, environment, enough):
    """What the program writes to a terminal until it ends or that is enough, and its status."""
    master, slave = pty.openpty()
    fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 20, 100, 0, 0))
    with subprocess.Popen(words, stdout=slave, stderr=slave, env=os.environ | environment) as running:
        os.close(slave)
        written = b""
        while not enough(written):
            try:
                written += os.read(master, 65536)
            except OSError:  # nobody has the terminal any more
                break
        if running.poll() is None:
            running.send_signal(signal.SIGINT)
        while True:
            try:
                if not os.read(master, 65536):
                    break
            except OSError:
                break
        status = running.wait()
    os.close(master)
    return written.decode(), status


def terminal(*words):
    plain = {"TERM": "xterm", "NO_COLOR": ""}
    text, status = on_terminal([*words, "--watch", "0.1"], plain, lambda seen: seen.count(b"\033[J") >= 2)
    first, second = text.split("\033[H")[1:3]
    print("status:", status)
    print("lines:", first.count("\n"), second.count("\n"), "more:", "more lines)" in second)
    for name, variables in [("colours", plain), ("NO_COLOR", plain | {"NO_COLOR": "1"}),
                            ("dumb", plain | {"TERM": "dumb"})]:
        text, status = on_terminal(words, variables, lambda seen: False)
        print(f"{name}:", "\033[1m" in text, "status:", status)


def files(program):
    for closed in ("0", "1", "2", "01", "12", "012"):
        running = subprocess.run(["sh", "-c", 'exec "$0" --json ' + " ".join(
            f"{number}>&-" for number in closed), program], capture_output=True, check=False)
        is_whole = running.stdout and json.loads(running.stdout)["ok"]
        print(f"without {closed}:", running.returncode, bool(is_whole), running.stderr.decode().strip())


if __name__ == "__main__":
    mode, *words = sys.argv[1:]
    {"signal": end_by_signal, "hang-up": hang_up, "terminal": terminal, "files": files}[mode](*words)
