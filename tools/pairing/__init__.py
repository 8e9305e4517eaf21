"""The parts of tools/score_pairing.py."""
