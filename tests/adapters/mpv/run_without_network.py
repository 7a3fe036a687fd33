#!/usr/bin/env python3
"""Runs a program that dies at the attempt to make a socket for a network: run_without_network.py FOLDER PROGRAM...

FOLDER is where no_network.py is.
"""
import subprocess
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, sys.argv[1])
import no_network  # noqa: E402

sys.exit(subprocess.run(sys.argv[2:], preexec_fn=no_network.enter, check=False).returncode)
