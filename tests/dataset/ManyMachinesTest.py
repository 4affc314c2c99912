#!/usr/bin/python3
"""Datasets made in parts by Slurm, GNU parallel and Dask have the bytes that one process makes, and
the example of reading learns from one. What is not installed is skipped."""

import hashlib
import importlib.util
import os
import shutil
import socket
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

ROOT = Path(os.environ["ZELVATONE_ROOT"])
PROGRAMS = os.environ["ZELVATONE_PROGRAMS"]  # the folder with zelvatone
CLUSTER = ROOT / "tools/cluster"
PARTS = 4
# 40 short sounds in shards of 6.
SOUNDS = ["--count", "40", "--seconds", "0.05", "--seed", "9", "--vary", "Attack=0.01 s:0.5 s",
          "--per-shard", "6"]
ENVIRONMENT = os.environ | {"PATH": PROGRAMS + ":" + os.environ["PATH"]}


def sumsOf(folder):
    """Every file of a dataset with its checksum."""
    return {path.relative_to(folder).as_posix(): hashlib.sha256(path.read_bytes()).hexdigest()
            for path in Path(folder).rglob("*") if path.is_file()}


def isMissing(*programs):
    return [program for program in programs if not shutil.which(program)]


class ManyMachines(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.temporary = tempfile.TemporaryDirectory()
        cls.folder = Path(cls.temporary.name)
        cls.run_("zelvatone", "dataset", cls.folder / "one", *SOUNDS, "-q")
        cls.expected = sumsOf(cls.folder / "one")

    @classmethod
    def tearDownClass(cls):
        cls.temporary.cleanup()

    @classmethod
    def run_(cls, *command, environment=None):
        result = subprocess.run([str(word) for word in command], env=environment or ENVIRONMENT,
                                capture_output=True, text=True, timeout=120, check=False)
        if result.returncode != 0:
            raise AssertionError(f"{command}: {result.stdout}{result.stderr}")
        return result.stdout

    def expectSame(self, name):
        self.assertEqual(sumsOf(self.folder / name), self.expected)

    def testGnuParallelMakesTheSameBytes(self):
        if isMissing("parallel"):
            self.skipTest("parallel")
        self.run_(CLUSTER / "parallel.sh", PARTS, self.folder / "parallel", *SOUNDS,
                  environment=ENVIRONMENT | {"JOBS": "2"})
        self.expectSame("parallel")

    def testDaskMakesTheSameBytes(self):
        if not importlib.util.find_spec("distributed"):
            self.skipTest("distributed")
        self.run_(CLUSTER / "dask_dataset.py", "--workers", 2, PARTS, self.folder / "dask", *SOUNDS)
        self.expectSame("dask")

    def testSlurmMakesTheSameBytes(self):
        if isMissing("slurmctld", "slurmd", "munged", "sbatch"):
            self.skipTest("slurm")
        if os.getuid() != 0:
            self.skipTest("root")
        with SlurmNode(self.folder / "node") as node:
            job = self.run_("sbatch", "--parsable", "--wait", f"--array=1-{PARTS}",
                            "--output", self.folder / "node/job-%a.log", CLUSTER / "slurm.sbatch",
                            self.folder / "slurm", *SOUNDS, environment=node.environment)
            self.assertRegex(job, r"^\d+")
        self.expectSame("slurm")

    def testExampleLearnsFromADataset(self):
        if not (importlib.util.find_spec("soundfile") and importlib.util.find_spec("numpy")):
            self.skipTest("soundfile")
        self.run_("zelvatone", "dataset", self.folder / "learn", "--count", "300", "--programs",
                  "Organ", "--notes", "48-60", "--seconds", "0.5", "--seed", "3", "-q", "--vary",
                  "Attack=0:0.15", "--vary", "Falloff=0:1", "--vary", "Chop=0.2:1", "--audio",
                  "flac")
        output = self.run_(ROOT / "tools/learn_from_dataset.py", self.folder / "learn", "-o",
                           self.folder / "learned.svg")
        self.assertRegex(output, r"^Attack: (8|9|10)\d % explained")
        self.assertEqual(output.count("% explained"), 3)
        self.assertIn("<circle", (self.folder / "learned.svg").read_text("utf-8"))


class SlurmNode:
    """Slurm on this machine alone: its three servers, with files of their own."""

    def __init__(self, folder):
        self.folder = folder
        self.environment = ENVIRONMENT | {"SLURM_CONF": str(folder / "slurm.conf")}
        self.servers = []

    def __enter__(self):
        self.folder.mkdir(mode=0o755)
        host = socket.gethostname()
        munge = self.folder / "munge.socket"
        (self.folder / "key").write_bytes(os.urandom(1024))
        (self.folder / "key").chmod(0o400)
        (self.folder / "slurm.conf").write_text(f"""
ClusterName=test
SlurmctldHost={host}(127.0.0.1)
SlurmUser=root
AuthInfo=socket={munge}
ProctrackType=proctrack/pgid
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
SchedulerParameters=sched_interval=1,batch_sched_delay=0
ReturnToService=2
SlurmctldPort={freePort()}
SlurmdPort={freePort()}
SlurmctldPidFile={self.folder}/slurmctld.pid
SlurmdPidFile={self.folder}/slurmd.pid
StateSaveLocation={self.folder}/state
SlurmdSpoolDir={self.folder}/spool
NodeName={host} NodeAddr=127.0.0.1 CPUs=2
PartitionName=main Nodes=ALL Default=YES
""", encoding="utf-8")
        try:
            self.start("munged", "--foreground", "--force", f"--socket={munge}",
                       f"--key-file={self.folder}/key", f"--pid-file={self.folder}/munged.pid",
                       f"--log-file={self.folder}/munged.log", f"--seed-file={self.folder}/seed")
            self.wait(munge.exists)
            self.start("slurmctld", "-D")
            self.start("slurmd", "-D", "-N", host)
            self.wait(lambda: "idle" in self.stateOfNode())
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for server in reversed(self.servers):
            server.terminate()
        for server in self.servers:
            server.wait(30)

    def start(self, *command):
        with open(self.folder / f"{command[0]}.out", "wb") as output:
            self.servers.append(subprocess.Popen(command, env=self.environment, stdout=output,
                                                 stderr=subprocess.STDOUT))

    def stateOfNode(self):
        return subprocess.run(["sinfo", "-h", "-o", "%T"], env=self.environment, text=True,
                              capture_output=True, timeout=30, check=False).stdout

    def wait(self, isReady):
        end = time.monotonic() + 30
        while not isReady():
            if time.monotonic() > end or any(server.poll() is not None for server in self.servers):
                logs = [path.read_text() for path in self.folder.glob("*.out")]
                raise AssertionError("Slurm does not start: " + "\n".join(logs)[-3000:])
            time.sleep(0.1)


def freePort():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


if __name__ == "__main__":
    unittest.main()
