# SPDX-License-Identifier: GPL-3.0-or-later
"""Tests scripts/new-update-key and scripts/sign-update.

usage: tst_sign_update.py [unittest's own]
"""

import base64
import hashlib
import json
import pathlib
import stat
import struct
import subprocess
import tempfile
import unittest

SCRIPTS = pathlib.Path(__file__).resolve().parents[2] / "scripts"
ELF = b"\x7fELF\x02\x01\x01" + bytes(9) + struct.pack("<HH", 3, 62) + b"program"
PE = b"MZ" + bytes(58) + struct.pack("<I", 64) + b"PE\0\0" + struct.pack("<H", 0x8664) + b"program"

# An example key of RFC 8032; tests/update/tst_UpdateSignature.cpp has its public half.
PRIVATE = "9d61b19deffd5a60ba844af492ec2cc44449c5697b326919703bac031cae7f60"
PUBLIC = "d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a"
PRIVATE_HEADER = "302e020100300506032b657004220420"
PUBLIC_HEADER = "302a300506032b6570032100"


def pem(kind, digits):
    text = base64.b64encode(bytes.fromhex(digits)).decode()
    return f"-----BEGIN {kind} KEY-----\n{text}\n-----END {kind} KEY-----\n"


class Case(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="vaskel-sign-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def run_script(self, name, *arguments):
        return subprocess.run([SCRIPTS / name, *arguments], capture_output=True, text=True, check=False)

    def write(self, name, content):
        path = self.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def is_signed(self, public, text, signature):
        """What openssl says."""
        key = self.write("public.pem", pem("PUBLIC", PUBLIC_HEADER + public))
        return subprocess.run(["openssl", "pkeyutl", "-verify", "-rawin", "-pubin", "-inkey", key,
                               "-in", self.write("text", text),
                               "-sigfile", self.write("signature", bytes.fromhex(signature))],
                              capture_output=True, check=False).returncode == 0


class NewKey(Case):
    def test_makes_a_pair_that_fits(self):
        path = self.folder / "key"
        done = self.run_script("new-update-key", path)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertRegex(done.stdout, r"\A[0-9a-f]{64}\n\Z")
        self.assertEqual(stat.S_IMODE(path.stat().st_mode), 0o600)
        signed = json.loads(self.run_script("sign-update", self.write("new", ELF), "--version", "2",
                                            "--key", path).stdout)
        text = "".join(f"{line}\n" for line in (
            "vaskel-update-1", "linux", "amd64", "2", len(ELF), hashlib.sha256(ELF).hexdigest(),
            hashlib.sha256(b"").hexdigest()))
        self.assertTrue(self.is_signed(done.stdout.strip(), text, signed["signature"]))
        self.assertFalse(self.is_signed(PUBLIC, text, signed["signature"]))

    def test_makes_another_pair_each_time(self):
        first = self.run_script("new-update-key", self.folder / "first").stdout
        second = self.run_script("new-update-key", self.folder / "second").stdout
        self.assertNotEqual(first, second)

    def test_overwrites_no_key(self):
        path = self.write("key", "an old key")
        done = self.run_script("new-update-key", path)
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("File exists", done.stderr)
        self.assertEqual(path.read_text(), "an old key")


class Sign(Case):
    def setUp(self):
        super().setUp()
        self.key = self.write("key", pem("PRIVATE", PRIVATE_HEADER + PRIVATE))

    def sign(self, content, *options, version="2.0.1"):
        return self.run_script("sign-update", self.write("new", content), "--version", version,
                               "--key", self.key, *options)

    def test_prints_the_answer(self):
        changelog = self.write("changelog", "- é\n")
        url = "https://host.example/new"
        done = self.sign(ELF, "--changelog", changelog, "--url", url)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        answer = json.loads(done.stdout)
        text = "".join(f"{line}\n" for line in (
            "vaskel-update-1", "linux", "amd64", "2.0.1", len(ELF), hashlib.sha256(ELF).hexdigest(),
            hashlib.sha256("- é\n".encode()).hexdigest()))
        self.assertTrue(self.is_signed(PUBLIC, text, answer.pop("signature")))
        self.assertEqual(answer, {
            "has_update": True, "version": "2.0.1", "changelog": "- é\n", "download_url": url,
            "mandatory": False, "size": len(ELF), "sha256": hashlib.sha256(ELF).hexdigest()})

    def test_knows_a_program_for_windows(self):
        answer = json.loads(self.sign(PE).stdout)
        text = "".join(f"{line}\n" for line in (
            "vaskel-update-1", "windows", "amd64", "2.0.1", len(PE), hashlib.sha256(PE).hexdigest(),
            hashlib.sha256(b"").hexdigest()))
        self.assertTrue(self.is_signed(PUBLIC, text, answer["signature"]))

    def test_says_that_the_address_is_missing(self):
        done = self.sign(ELF)
        self.assertIn("--url", done.stderr)
        self.assertNotIn("download_url", json.loads(done.stdout))

    def test_signs_no_other_files(self):
        for content in (b"", b"MZ", b"\x7fELF\x02", b"#!/bin/sh\n", PE.replace(b"PE\0\0", b"NE\0\0"),
                        ELF.replace(struct.pack("<HH", 3, 62), struct.pack("<HH", 3, 8))):
            with self.subTest(content):
                done = self.sign(content)
                self.assertEqual((done.returncode, done.stdout), (1, ""))
                self.assertNotIn("Traceback", done.stderr)

    def test_takes_no_other_versions(self):
        for version in ("", "2.0-rc1", "v2", "2.0.0.0.0", "2.0\n", "9999999999"):
            with self.subTest(version):
                done = self.sign(ELF, version=version)
                self.assertEqual((done.returncode, done.stdout), (2, ""))

    def test_takes_only_addresses_that_vaskel_takes(self):
        for url in ("http://host.example/new", "ftp://host.example/new", "/new"):
            with self.subTest(url):
                self.assertEqual(self.sign(ELF, "--url", url).returncode, 2)
        self.assertEqual(self.sign(ELF, "--url", "http://127.0.0.1:8080/new").returncode, 0)

    def test_fails_without_a_usable_key(self):
        rsa = self.folder / "rsa"
        subprocess.run(["openssl", "genpkey", "-algorithm", "rsa", "-out", rsa], check=True,
                       capture_output=True)
        for key in (self.folder / "none", self.write("text", "no key"), rsa):
            with self.subTest(key):
                done = self.run_script("sign-update", self.write("new", ELF), "--version", "2",
                                       "--key", key)
                self.assertEqual((done.returncode, done.stdout), (1, ""))


if __name__ == "__main__":
    unittest.main()
