// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// What a file looks like and does when it brings no shape or behaviour of its own.
#pragma once
#include <string>

class CKVGen;

namespace kview {

/// The kinds of file the room shows, each with its own stock solid, colour and behaviour.
enum class Category { Program, Document, Picture, Sound, Scene, Folder };

/// The category of a file by its library file type (a directory is a folder).
Category categoryOf(const std::string& path, bool isDirectory);
/// A short lower-case name of the category ("program", "sound", ...).
const char* categoryName(Category category);

/// A flat colour, components 0 to 1.
struct Colour {
  float r, g, b;
};
/// The colour the category's solids are painted in where they have no texture.
Colour categoryColour(Category category);

/// Fills an initialised, empty generator with the category's seed and instructions.
bool buildStockShape(Category category, CKVGen* gen);

/// The behaviour text of a file without a ".kvc": select turns it once round, open pings,
/// and open also asks for what the category does with its file (play, run, load or go to).
std::string stockBehaviour(Category category, const std::string& fileName);
/// The smallest behaviour, for a file whose name does not fit in a behaviour line.
std::string minimalBehaviour();

}  // namespace kview
