#!/usr/bin/env python3
"""Shares named blocks between processes: check_shared_blocks.py [EMULATOR] PEER

PEER is the program that obeys the commands of block_peer.cpp.
"""
import os
import subprocess
import sys
import tempfile
import time
import unittest

PEER = sys.argv[1:]
ROUNDS = 300
WINDOWS = PEER[-1].endswith(".exe")


class Peer:
    """A process that holds at most one block."""

    def __init__(self, test, runtime=None, user=None):
        environment = dict(os.environ, XDG_RUNTIME_DIR=test.runtime if runtime is None else runtime)
        self.process = subprocess.Popen(PEER, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        text=True, env=environment, user=user)
        test.addCleanup(self.end)

    def send(self, command, word="-", number=0, count=0):
        self.process.stdin.write(f"{command} {word} {number} {count}\n")
        self.process.stdin.flush()

    def answer(self):
        return self.process.stdout.readline().rstrip("\n")

    def ask(self, *words):
        self.send(*words)
        return self.answer()

    def kill(self):
        self.process.kill()
        self.process.wait(timeout=30)

    def end(self):
        self.process.stdin.close()
        self.process.wait(timeout=30)
        self.process.stdout.close()


class SharedBlocks(unittest.TestCase):
    def setUp(self):
        self.name = f"jw32-test-{os.getpid()}"
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.runtime = folder.name
        self.one, self.other = Peer(self), Peer(self)

    def wait_until_gone(self):
        """Some platforms take a moment to notice the end of a process."""
        for _ in range(100):
            if self.other.ask("exist", self.name) == "no":
                return True
            time.sleep(0.05)
        return False

    def test_what_one_writes_the_other_reads(self):
        self.assertEqual(self.one.ask("create", self.name, 100000), "done")
        self.assertEqual(self.other.ask("create", self.name, 100000), "no", "the name is taken")
        self.assertEqual(self.other.ask("open", self.name), "done")
        self.one.ask("write", "hello", 99990)
        self.assertEqual(self.other.ask("read", "-", 99990, 5), "hello")
        self.other.ask("write", "answer", 0)
        self.assertEqual(self.one.ask("read", "-", 0, 6), "answer")

    def test_a_block_outlives_its_maker_and_ends_with_its_last_holder(self):
        self.one.ask("create", self.name, 100)
        self.other.ask("open", self.name)
        self.one.ask("write", "kept", 0)
        self.one.ask("close")
        self.assertEqual(self.one.ask("exist", self.name), "done")
        self.assertEqual(self.other.ask("read", "-", 0, 4), "kept")
        self.other.ask("close")
        self.assertEqual(self.one.ask("exist", self.name), "no")

    def test_a_killed_holder_holds_nothing_any_more(self):
        self.other.ask("create", self.name + "-first", 10)
        self.other.ask("close")
        self.one.ask("create", self.name, 100)
        self.assertEqual(self.other.ask("exist", self.name), "done")
        self.one.kill()
        self.assertTrue(self.wait_until_gone(), "the block outlived its only holder")
        self.assertEqual(self.other.ask("create", self.name, 50), "done", "the name is free")
        self.assertEqual(self.other.ask("read", "-", 0, 2), "\0\0", "nothing is left in it")

    def test_the_memory_of_a_killed_holder_is_given_back(self):
        self.one.ask("create", self.name, 100)
        self.one.kill()
        self.assertEqual(self.other.ask("create", self.name + "-next", 100), "done")
        if not WINDOWS:
            files = os.listdir(self.runtime + "/jw32")
            self.assertEqual(files, [f"l-{self.name}-next"], "by the next process that makes one")

    @unittest.skipIf(WINDOWS, "the host's folders are those of the Linux build")
    def test_a_runtime_folder_that_does_not_serve_is_passed_over(self):
        os.mkdir(self.runtime + "/open")
        os.chmod(self.runtime + "/open", 0o755)
        bad = [Peer(self, runtime) for runtime in
               ("", "relative", self.runtime + "/missing", self.runtime + "/open", "/")]
        self.assertEqual(bad[0].ask("create", self.name, 100), "done")
        for peer in bad[1:]:
            self.assertEqual(peer.ask("open", self.name), "done")
        self.assertEqual(self.one.ask("exist", self.name), "no", "its folder serves")

    @unittest.skipIf(WINDOWS or os.geteuid() != 0, "needs a second user")
    def test_a_folder_of_somebody_else_denies_nobody_his_blocks(self):
        user = 54321
        for folder in (f"/dev/shm/jw32-{user}", f"/dev/shm/jw32-{user}-1"):
            os.mkdir(folder)
            self.addCleanup(os.rmdir, folder)
        self.addCleanup(os.rmdir, f"/dev/shm/jw32-{user}-2")
        maker, joiner = (Peer(self, "", user) for _ in range(2))
        self.assertEqual(maker.ask("create", self.name, 100), "done")
        self.assertEqual(joiner.ask("open", self.name), "done")
        self.addCleanup(os.mkdir, f"/dev/shm/jw32-{user}")
        os.rmdir(f"/dev/shm/jw32-{user}")
        self.assertEqual(Peer(self, "", user).ask("open", self.name), "done", "the name is free")

    def test_a_killed_maker_leaves_the_block_to_those_who_opened_it(self):
        self.one.ask("create", self.name, 100)
        self.one.ask("write", "kept", 0)
        self.other.ask("open", self.name)
        self.one.kill()
        self.assertEqual(self.other.ask("read", "-", 0, 4), "kept")
        third = Peer(self)
        self.assertEqual(third.ask("open", self.name), "done")
        self.assertEqual(third.ask("read", "-", 0, 4), "kept")

    def test_nobody_sees_a_block_half_made(self):
        peers = [self.one, self.other, Peer(self)]
        for peer in peers:
            peer.send("race", self.name, 20000, ROUNDS)
        counts = [[int(count) for count in peer.answer().split()] for peer in peers]
        joined, broken = (sum(column) for column in zip(*counts))
        self.assertEqual(broken, 0, counts)
        self.assertGreater(joined, 0, f"the processes never met: {counts}")
        self.assertEqual(self.one.ask("exist", self.name), "no")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
