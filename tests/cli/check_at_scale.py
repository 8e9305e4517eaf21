#!/usr/bin/env python3
"""Runs the commands of docs/AT_SCALE.md over many pairs of documents, each with the scheduler it is for, and
compares what comes out with one run over all pairs: check_at_scale.py PROGRAM DOCUMENT [PAIRS [ROAD...]]

A scheduler that is not installed is told and passed over. Nothing needs the rights of root: Slurm runs as one node in a
folder of its own. With PAIRS it takes that many and prints what each road took: all of
parallel, pipe and slurm, or those that are named."""

import json
import os
import pathlib
import random
import re
import resource
import shutil
import socket
import subprocess
import sys
import tempfile
import time
import zipfile

PROGRAM, DOCUMENT = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
MEASURED = len(sys.argv) > 3
PAIRS = int(sys.argv[3]) if MEASURED else 60
ROADS = sys.argv[3:][1:] or ["parallel", "pipe", "slurm"]
A_PART = "500" if MEASURED else "25"
WORDS = [a + b + c for a in "ba de fo gu ka li mo nu".split() for b in "r n st nd".split() for c in ("", "er", "ing")]
MAIN = "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml"
TYPES = f'<Types><Override PartName="/word/document.xml" ContentType="{MAIN}"/></Types>'
ROOT = ('<Relationships><Relationship Id="r1" Type="http://x/officeDocument" Target="word/document.xml"/>'
        '</Relationships>')
SPACE = "http://schemas.openxmlformats.org/wordprocessingml/2006/main"
faults = []


def write_document(path, paragraphs):
    body = "".join(f"<w:p><w:r><w:t>{text}</w:t></w:r></w:p>" for text in paragraphs)
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as package:
        package.writestr("[Content_Types].xml", TYPES)
        package.writestr("_rels/.rels", ROOT)
        package.writestr("word/document.xml",
                         f'<w:document xmlns:w="{SPACE}"><w:body>{body}</w:body></w:document>')


def write_pairs(folder):
    """Two pages each, every fourth pair without a difference, one that is no document."""
    rng = random.Random(1)
    lines = []
    for number in range(PAIRS):
        names = [f"documents/{number:05}{side}.docx" for side in "ab"]
        text = [" ".join(rng.choices(WORDS, k=rng.randint(6, 40))) for _ in range(40)]
        write_document(folder / names[0], text)
        for at in rng.sample(range(len(text)), 0 if number % 4 == 0 else 3):
            text[at] += f" and {number}"
        write_document(folder / names[1], text)
        lines.append("\t".join(names))
    (folder / "documents/00001b.docx").write_bytes(b"PK\x03\x04 no document")
    (folder / "pairs.tsv").write_text("\n".join(lines) + "\n")


def commands():
    """The named blocks of the document: NAME.sh to what it holds."""
    return dict(re.findall(r"```sh (\S+)\n(.*?)```", DOCUMENT.read_text(), re.S))


def results(text):
    """What is told of each pair; its number counts within a part."""
    lines = [json.loads(line) for line in text.splitlines()]
    for line in lines:
        del line["pair"]
    return lines


def run(folder, name, text, **more):
    script = folder / name
    script.write_text(text.replace("-l 500", f"-l {A_PART}").replace("-N 500", f"-N {A_PART}"))
    script.chmod(0o755)
    environment = {**os.environ, "PATH": f"{PROGRAM.parent}:{os.environ['PATH']}", "HOME": str(folder),
                   "LANG": "C.UTF-8", **more.pop("environment", {})}
    return subprocess.run(["sh", f"./{name}"], cwd=folder, env=environment, capture_output=True, text=True, **more)


def check(road, text, wanted, began):
    if results(text) != wanted:
        faults.append(f"{road}: another result than one run over all pairs")
    if MEASURED:
        seconds = time.monotonic() - began
        print(f"{road}: {seconds:.1f} s, {PAIRS / seconds:.0f} pairs a second", flush=True)


def largest_sum(process):
    """Bytes in memory of a process and its readers, the most that was seen while it ran."""
    most = 0
    while process.poll() is None:
        pages = 0
        for stat in pathlib.Path("/proc").glob("[0-9]*/stat"):
            try:
                fields = stat.read_text().rpartition(")")[2].split()
            except OSError:
                continue
            if process.pid in (int(fields[1]), int(stat.parent.name)):
                pages += int(fields[21])
        most = max(most, pages * os.sysconf("SC_PAGE_SIZE"))
        time.sleep(0.02)
    return most


def tell_cost(folder):
    """Processor time and memory of one pair after the other, readers included."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    with subprocess.Popen([PROGRAM, "compare", "--pairs", "pairs.tsv", "-j", "1", "-q"], cwd=folder,
                          env={**os.environ, "HOME": str(folder)}) as process:
        memory = largest_sum(process)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    seconds = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
    print(f"processor time: {1000 * seconds / PAIRS:.2f} ms a pair; memory: {memory / 2**20:.0f} MiB; "
          f"{os.cpu_count()} cores, load {os.getloadavg()[0]:.1f}", flush=True)


def clear(folder):
    for part in [*folder.glob("part.*"), *folder.glob("results*")]:
        part.unlink()


def try_parallel(folder, blocks, wanted):
    if not shutil.which("parallel"):
        print("GNU parallel is not installed: passed over")
        return
    for name in ("parallel.sh", "stream.sh"):
        clear(folder)
        began = time.monotonic()
        done = run(folder, name, blocks[name])
        # A pair in trouble is one of the jobs that failed, which GNU parallel counts.
        if done.returncode != 1:
            faults.append(f"{name}: status {done.returncode} {done.stderr}")
        check(f"GNU parallel, {name}", (folder / "results.jsonl").read_text(), wanted, began)


def try_pipe_step(folder, blocks, wanted):
    began = time.monotonic()
    done = run(folder, "spark-step.sh", blocks["spark-step.sh"], input=(folder / "pairs.tsv").read_text())
    if done.returncode != 0:
        faults.append(f"pipe step: status {done.returncode} {done.stderr}")
    check("one pipe step", done.stdout, wanted, began)


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Slurm:
    """One node, without root, accounting or authentication, on free ports."""

    def __init__(self, folder):
        self.folder, host = folder, socket.gethostname().split(".")[0]
        user = subprocess.run(["id", "-un"], capture_output=True, text=True, check=True).stdout.strip()
        for name in ("state", "spool"):
            (folder / name).mkdir()
        self.file = folder / "slurm.conf"
        self.file.write_text(f"""ClusterName=test
SlurmctldHost={host}(127.0.0.1)
SlurmUser={user}
SlurmdUser={user}
AuthType=auth/none
CredType=cred/none
SlurmctldPort={free_port()}
SlurmdPort={free_port()}
StateSaveLocation={folder}/state
SlurmdSpoolDir={folder}/spool
SlurmctldPidFile={folder}/slurmctld.pid
SlurmdPidFile={folder}/slurmd.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
MpiDefault=none
ReturnToService=2
SchedulerType=sched/builtin
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SwitchType=switch/none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
NodeName={host} NodeAddr=127.0.0.1 CPUs={os.cpu_count()} RealMemory={512 * os.cpu_count()} State=UNKNOWN
PartitionName=all Nodes={host} Default=YES MaxTime=INFINITE State=UP
""")
        self.environment = {"SLURM_CONF": str(self.file), "PATH": f"{os.environ['PATH']}:/usr/sbin"}
        node = ["slurmd", "-D", "-f", str(self.file), "-N", host]
        self.daemons = [self.start(["slurmctld", "-D", "-f", str(self.file)], "slurmctld.log"),
                        self.start(node, "slurmd.log")]

    def start(self, command, log):
        with open(self.folder / log, "wb") as out:
            return subprocess.Popen(command, stdout=out, stderr=out, env={**os.environ, **self.environment})

    def ask(self, *command):
        done = subprocess.run(command, env={**os.environ, **self.environment}, capture_output=True, text=True)
        return done.stdout if done.returncode == 0 else ""

    def wait(self, holds, seconds):
        until = time.monotonic() + seconds
        while not holds():
            if time.monotonic() > until or any(daemon.poll() is not None for daemon in self.daemons):
                return False
            time.sleep(0.1)
        return True

    def close(self):
        for daemon in reversed(self.daemons):
            daemon.terminate()
            daemon.wait()


def try_slurm(folder, blocks, wanted):
    if not shutil.which("slurmd", path=f"{os.environ['PATH']}:/usr/sbin"):
        print("Slurm is not installed: passed over")
        return
    home = pathlib.Path(tempfile.mkdtemp(prefix="slurm-"))
    slurm = Slurm(home)
    try:
        if not slurm.wait(lambda: "idle" in slurm.ask("sinfo", "-h", "-o", "%t"), 30):
            log = (home / "slurmctld.log").read_text()[-300:] + (home / "slurmd.log").read_text()[-300:]
            print(f"Slurm does not start here: passed over\n{log}")
            return
        clear(folder)
        (folder / "job.sh").write_text(blocks["job.sh"])
        began = time.monotonic()
        sent = run(folder, "submit.sh", blocks["submit.sh"], environment={"SLURM_CONF": str(slurm.file)})
        if sent.returncode != 0:
            faults.append(f"Slurm: {sent.stderr}")
            return
        if not slurm.wait(lambda: slurm.ask("squeue", "-h") == "" and slurm.ask("sinfo", "-h") != "", 3600):
            faults.append("Slurm: the jobs do not end")
        parts = sorted(folder.glob("part.*.jsonl"))
        check("Slurm array", "".join(part.read_text() for part in parts), wanted, began)
    finally:
        slurm.close()
        shutil.rmtree(home, ignore_errors=True)


def main():
    folder = pathlib.Path(tempfile.mkdtemp(prefix="scale-"))
    try:
        (folder / "documents").mkdir()
        write_pairs(folder)
        began = time.monotonic()
        whole = run(folder, "whole.sh", "zorvane compare --pairs pairs.tsv")
        wanted = results(whole.stdout)
        if whole.returncode != 2 or [line["status"] for line in wanted[:3]] != [0, 2, 1] or len(wanted) != PAIRS:
            faults.append(f"one run: status {whole.returncode}, {len(wanted)} lines {whole.stderr}")
        check("one run", whole.stdout, wanted, began)
        if MEASURED:
            tell_cost(folder)
        blocks = commands()
        roads = {"parallel": try_parallel, "pipe": try_pipe_step, "slurm": try_slurm}
        for road in ROADS:
            roads[road](folder, blocks, wanted)
    finally:
        shutil.rmtree(folder)
    for fault in faults:
        print("FAILED", fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
