"""What bash, zsh and fish offer where the tab key is pressed behind a line."""
import os
import pathlib
import pty
import re
import subprocess
import time

BASH_COMPLETION = pathlib.Path("/usr/share/bash-completion/bash_completion")


def bash(share, lines, environment, folder):
    """Calls the functions as readline does, with the words that COMP_WORDBREAKS makes of a line."""
    script = f"source {BASH_COMPLETION}\n"
    script += "".join(f"source '{file}'\n" for part in share
                      for file in sorted((part / "bash-completion/completions").iterdir()))
    script += "compopt() { :; }\n"
    for line in lines:
        words = re.findall(r'"[^"]*"?|[=:]+|[^\s=:]+', line) + ([""] if line[-1] in " =" else [])
        function = "_" + words[0].replace("-", "_")
        quoted = " ".join("'" + word + "'" for word in words)
        script += (f"COMP_LINE='{line}' COMP_POINT={len(line)} COMP_CWORD={len(words) - 1} COMPREPLY=()\n"
                   f"COMP_WORDS=({quoted}); {function} '{words[0]}' '{words[-1]}' '{words[-2]}'\n"
                   "printf '%s\\n' \"${COMPREPLY[@]}\" END\n")
    run = subprocess.run(["bash", "--norc", "--noprofile", "-c", script], cwd=folder, env=environment,
                         capture_output=True, text=True, check=False)
    assert not run.stderr, run.stderr
    return [part.split("\n") for part in run.stdout.split("END\n")[:-1]]


def fish(share, lines, environment, folder):
    paths = " ".join(f"'{part}/fish/vendor_completions.d'" for part in share)
    script = f"set -g fish_complete_path {paths} $fish_complete_path\n"
    for line in lines:
        script += f"complete -C '{line}'; echo END\n"
    run = subprocess.run(["fish", "--no-config", "-c", script], cwd=folder, env=environment,
                         capture_output=True, text=True, check=False)
    assert not run.stderr, run.stderr
    return [[word.split("\t")[0] for word in part.split("\n")] for part in run.stdout.split("END\n")[:-1]]


# Notes in a file whatever is added to the list of matches.
ZSH = r"""
PROMPT= ; unsetopt beep
fpath=(%s $fpath); autoload -Uz compinit; compinit -u -D
compadd() {
  local argument
  for argument; do
    [[ $argument == (-|--) ]] && break
    if [[ $argument == -[OAD] ]]; then builtin compadd "$@"; return; fi
  done
  local -a matches
  builtin compadd -O matches "$@"
  print -rl -- $matches >>"$HOME/zsh.found"
  builtin compadd "$@"
}
finish() { comppostfuncs=(finish); print -r -- END >>"$HOME/zsh.found" }
comppostfuncs=(finish)
zstyle ':completion:*' insert-tab false
bindkey '^I' list-choices; bindkey '^U' kill-whole-line
print -r -- READY >>"$HOME/zsh.found"
"""


def zsh(share, lines, environment, folder):
    """Types the lines into a shell on a terminal of its own."""
    found = pathlib.Path(environment["HOME"]) / "zsh.found"
    init = pathlib.Path(environment["HOME"]) / "zsh.init"
    found.write_text("")
    paths = " ".join(f"'{part}/zsh/site-functions'" for part in share)
    init.write_text(ZSH % paths)
    child, terminal = pty.fork()
    if child == 0:
        os.chdir(folder)
        os.execvpe("zsh", ["zsh", "-f", "-i"], environment)
    os.set_blocking(terminal, False)

    def wait(mark):
        for _ in range(1200):
            try:
                os.read(terminal, 65536)
            except BlockingIOError:
                pass
            text = found.read_text()
            if text.endswith(mark + "\n"):
                found.write_text("")
                return text[:-len(mark) - 1].split("\n")
            time.sleep(0.05)
        raise TimeoutError(f"zsh answers nothing; so far: {found.read_text()}")

    try:
        os.write(terminal, b'source "$HOME/zsh.init"\n')
        wait("READY")
        answers = []
        for line in lines:
            os.write(terminal, (line + "\t").encode())
            answers.append(wait("END"))
            os.write(terminal, b"\x15")
        return answers
    finally:
        os.close(terminal)
        os.waitpid(child, 0)


SHELLS = {"bash": bash, "zsh": zsh, "fish": fish}
