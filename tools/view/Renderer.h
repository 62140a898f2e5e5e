// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Drawing with OpenGL 3.3 core: the room, the objects' solids with their textures, footprints on the
// floor, names above the objects, and the screenshot.
#pragma once
#include <array>
#include <map>
#include <string>
#include <vector>

namespace kview {

class World;
class Messages;

/// Draws the world through the camera's clip matrix. Needs a current OpenGL 3.3 core context.
class Renderer {
 public:
  Renderer() = default;
  ~Renderer();
  Renderer(const Renderer&) = delete;
  Renderer& operator=(const Renderer&) = delete;

  /// Compiles the shaders; false (with a sentence in *problem) when the context cannot run them.
  bool init(std::string* problem);
  /// Uploads the room and every object's solid and textures (unreadable textures are reported).
  void load(World& world, Messages& messages);
  /// Draws the room and the objects into the view of width x height pixels beginning left pixels
  /// from the window's left edge.
  void draw(World& world, const std::array<float, 16>& clip, int left, int width, int height, int frame);
  /// Puts the objects' names above them (on Dear ImGui's background layer), for the same view.
  void drawLabels(World& world, int left, int width, int height);
  /// Draws an RGBA texture as a rectangle in pixels (y down) over the view.
  void drawImage(unsigned int texture, int x, int y, int w, int h, int viewWidth, int viewHeight);
  /// Saves the back buffer as a PNG picture; false when it cannot be written.
  static bool savePng(const std::string& path, int width, int height);

 private:
  struct Buffers {
    unsigned int vao = 0, vbo = 0;
    int count = 0;
  };
  Buffers upload(const void* data, std::size_t bytes, int count, bool dynamic);
  unsigned int texture(const std::string& path, Messages& messages);
  void drawRoom(int mode);
  void drawObjects(World& world, int frame);
  void drawFootprints(World& world);
  void setModel(const float* position, float heading, float scale);

  unsigned int m_program = 0;
  unsigned int m_imageProgram = 0;
  Buffers m_floor, m_walls, m_lines, m_quad;
  std::vector<Buffers> m_objects;
  std::vector<std::array<unsigned int, 3>> m_objectTextures;
  std::map<std::string, unsigned int> m_textures;
  std::vector<float> m_lineData;
};

}  // namespace kview
