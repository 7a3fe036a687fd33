"""The parts of the program bladeenc."""
