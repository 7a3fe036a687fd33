// Keeps the libraries of the sound devices from writing on the terminal. Called by whoever loads the engine.
#pragma once

namespace quavernet::mpv {

/// The engine tries its outputs one after the other. Where a device or a server is missing, the libraries of
/// ALSA, JACK and PipeWire say so in many lines that mean nothing to a user; the player's window says what
/// it means. Does nothing for a library that is not loaded. PipeWire's is left alone if PIPEWIRE_DEBUG is
/// set: somebody wants to read it.
void HushDevices();

} // namespace quavernet::mpv
