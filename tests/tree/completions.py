#!/usr/bin/env python3
"""The completions answer in the shells themselves: completions.py bash|zsh|fish <completions>

Exit status 77: the shell is not installed.
"""
import fcntl
import os
import pty
import select
import shutil
import struct
import subprocess
import sys
import tempfile
import termios

shell, completions = sys.argv[1:]
SKIPPED = 77
PATIENCE = 20  # seconds

# What is typed behind "tagmend ", with TAB where the user presses it, and the arguments that it
# makes. This holds in bash and zsh alike.
COMMON = [
    ("-a exp-p\t", "<-a><exp-prog=>"),
    ("-a orient=upper-l\t", "<-a><orient=upper-left>"),
    ("-a orient=up\t", "<-a><orient=upper->"),  # left or right
    ("-a ORIENT=upper-l\t", "<-a><ORIENT=upper-left>"),
    ("-a exp-time=1/125,orie\t", "<-a><exp-time=1/125,orient=>"),
    ("-a exp-time=1/125,orient=lower-r\t", "<-a><exp-time=1/125,orient=lower-right>"),
    ("-a ip-image-or\t", "<-a><ip-image-orient=>"),
    ("-a ip-image-orient=por\t", "<-a><ip-image-orient=portrait>"),
    ("-a date-taken=2005:05:01,res-unit=in\t", "<-a><date-taken=2005:05:01,res-unit=inch>"),
    ("-a fu-white-bal=3\t", "<-a><fu-white-bal=3>"),  # no such value
    ("-a f-number=5\t", "<-a><f-number=5>"),  # a field without named values
    ("-a artist=J,f-number=5\t", "<-a><artist=J,f-number=5>"),
    ("-a maker-no\t", "<-a><maker-no>"),  # cannot be set,
    ("-r maker-no\t", "<-r><maker-note>"),  # but removed
    ("-r artist,copyr\t", "<-r><artist,copyright>"),
    ("-bia exp-p\t", "<-bia><exp-prog=>"),
    ("-b -r exp-prog -a exp-p\t", "<-b><-r><exp-prog><-a><exp-prog=>"),
    ("-p lo\t", "<-p><local=>"),
    ("-p local=UT\t", "<-p><local=UTF-8>"),
    ("-a @cred\t", "<-a><@credits.txt>"),
    ("-b pho\t", "<-b><photo.jpg>"),
    ("-a artist=x pho\t", "<-a><artist=x><photo.jpg>"),
    ("-b photo.jpg pho\t", "<-b><photo.jpg><photo.jpg>"),
]
BASH = [
    ("-aexp-p\t", "<-aexp-prog=>"),
    ("-e\t \ti", "<-e><i>"),
    ("-a 'artist=\"Doe, J.\",orient=upper-l\t", "<-a><artist=\"Doe, J.\",orient=upper-left>"),
    ("-a 'artist=\"Doe, orie\t\"'", "<-a><artist=\"Doe, orie\">"),
    ("-a artist='J. Doe',orient=upper-l\t", "<-a><artist=J. Doe,orient=upper-left>"),
]
# The candidates that fish names.
FISH = [
    ("-a exp-p", ["exp-prog="]),
    ("-a orient=up", ["orient=upper-left", "orient=upper-right"]),
    ("-a ORIENT=upper-l", ["ORIENT=upper-left"]),
    ("-a exp-time=1/125,orie", ["exp-time=1/125,orient="]),
    ("-a exp-time=1/125,orient=lower-r", ["exp-time=1/125,orient=lower-right"]),
    ("-a maker-no", []),
    ("-r maker-no", ["maker-note"]),
    ("-r artist,copyr", ["artist,copyright"]),
    ("-e ", ["a", "e", "f", "i"]),
    ("-p local=utf-8,ip", ["local=utf-8,iptc="]),
    ("-p local=UT", ["local=UTF-8"]),
]


class Session:
    """An interactive shell on a terminal of its own, to which the test types. In it "tagmend" is a
    function that prints its arguments: they show what a TAB has made of the line."""

    def __init__(self, command, directory, set_up):
        self.shown = ""
        try:
            child, self.terminal = pty.fork()
        except OSError:
            print("there is no terminal to be had")
            sys.exit(SKIPPED)
        if child == 0:
            os.chdir(directory)
            os.execvpe(command[0], command, {"TERM": "dumb", "INPUTRC": "/dev/null", "LC_ALL": "C",
                                             "HISTFILE": "/dev/null", "HOME": directory,
                                             "PATH": os.environ["PATH"]})
        # So wide that no line is wrapped.
        fcntl.ioctl(self.terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 50, 500, 0, 0))
        for line in set_up:
            self.type(line + "\n")
        # In two pieces, so that the echo of this line is not taken for a prompt or an answer.
        self.type("tagmend() { printf 'arg'; printf 's:'; printf '<%s>' \"$@\"; echo; }\n")
        self.type("PS1='rea''dy> '; PROMPT=$PS1\n")
        self.read_until("ready> ")

    def type(self, text):
        os.write(self.terminal, text.encode())

    def read_until(self, text):
        """What the terminal shows up to this text, which is taken off too."""
        while text not in self.shown:
            if not select.select([self.terminal], [], [], PATIENCE)[0]:
                sys.exit(f"no {text!r} on the terminal, but\n{self.shown}")
            self.shown += os.read(self.terminal, 4096).decode("utf-8", "replace")
        before, _, self.shown = self.shown.partition(text)
        return before

    def arguments_of(self, text):
        self.type(f"tagmend {text}\n")
        self.read_until("args:")
        return self.read_until("ready> ").splitlines()[0]


def fish_candidates(line):
    """fish completes without a terminal: one a line, with its description behind a TAB."""
    script = f"source '{completions}/fish/tagmend.fish'; complete -C 'tagmend {line}'"
    done = subprocess.run(["fish", "--no-config", "-c", script], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False)
    return sorted(candidate.partition("\t")[0] for candidate in done.stdout.splitlines())


def main():
    if shutil.which(shell) is None:
        print(f"{shell} is not installed")
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        for name in ("photo.jpg", "credits.txt"):
            open(os.path.join(folder, name), "w").close()
        if shell == "fish":
            lines, answer = FISH, fish_candidates
        elif shell == "bash":
            lines = COMMON + BASH
            answer = Session(["bash", "--norc", "--noprofile", "-i"], folder,
                             ["bind 'set bell-style none'",
                              f"source '{completions}/bash/tagmend'"]).arguments_of
        else:
            lines = COMMON
            answer = Session(["zsh", "-f", "-i"], folder,
                             [f"fpath=('{completions}/zsh' $fpath)", "autoload -Uz compinit",
                              "compinit -u -D", "setopt no_beep no_auto_remove_slash"]).arguments_of
        found = [(line, answer(line)) for line, _ in lines]
    for (line, wanted), (_, answered) in zip(lines, found):
        if answered != wanted:
            print(f"{line!r} gives {answered}, not {wanted}")
    return 0 if found == lines else 1


if __name__ == "__main__":
    sys.exit(main())
