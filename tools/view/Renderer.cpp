// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Renderer.h"

#include <epoxy/gl.h>
#include <imgui.h>
#include <stb_image.h>
#include <stb_image_write.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "Picking.h"
#include "World.h"

namespace kview {
namespace {

constexpr float kWallHeight = 3.0f;
constexpr float kLabelDistance = 30.0f;
enum Mode { kLit = 0, kFloor = 1, kFlat = 2 };

const char* const kVertexShader = R"(#version 330 core
layout(location = 0) in vec3 aPos;
layout(location = 1) in vec3 aNormal;
layout(location = 2) in vec2 aUv;
uniform mat4 uClip;
uniform mat4 uModel;
out vec3 vWorld;
out vec3 vNormal;
out vec2 vUv;
void main() {
  vec4 world = uModel * vec4(aPos, 1.0);
  vWorld = world.xyz;
  vNormal = mat3(uModel) * aNormal;
  vUv = aUv;
  gl_Position = uClip * world;
})";

// Normals are turned towards the eye, so a solid is lit alike whichever way its faces are wound.
const char* const kFragmentShader = R"(#version 330 core
in vec3 vWorld;
in vec3 vNormal;
in vec2 vUv;
uniform vec3 uColour;
uniform vec3 uEye;
uniform sampler2D uTexture;
uniform int uTextured;
uniform int uMode;
uniform float uHighlight;
out vec4 fragColour;
void main() {
  if (uMode == 2) { fragColour = vec4(uColour, 1.0); return; }
  vec3 toEye = uEye - vWorld;
  vec3 n = normalize(vNormal);
  if (dot(n, toEye) < 0.0) n = -n;
  vec3 base = uColour;
  if (uTextured == 1) base *= texture(uTexture, vUv).rgb;
  if (uMode == 1) base *= mix(0.82, 1.0, mod(floor(vWorld.x) + floor(vWorld.z), 2.0));
  float key = max(dot(n, normalize(vec3(-0.45, 1.0, -0.6))), 0.0);
  float fill = max(dot(n, normalize(vec3(0.7, 0.2, 0.4))), 0.0);
  vec3 c = base * (0.30 + 0.62 * key + 0.22 * fill);
  c = mix(c, vec3(1.0, 0.84, 0.32), uHighlight);
  float fog = clamp(length(toEye) / 120.0, 0.0, 0.7);
  fragColour = vec4(mix(c, vec3(0.17, 0.21, 0.29), fog * fog), 1.0);
})";

const char* const kImageVertexShader = R"(#version 330 core
layout(location = 0) in vec2 aCorner;
uniform vec4 uRect;
out vec2 vUv;
void main() {
  vUv = aCorner;
  gl_Position = vec4(uRect.xy + aCorner * uRect.zw, 0.0, 1.0);
})";

const char* const kImageFragmentShader = R"(#version 330 core
in vec2 vUv;
uniform sampler2D uTexture;
out vec4 fragColour;
void main() { fragColour = vec4(texture(uTexture, vUv).rgb, 1.0); })";

GLuint compile(GLenum kind, const char* source, std::string* problem) {
  const GLuint shader = glCreateShader(kind);
  glShaderSource(shader, 1, &source, nullptr);
  glCompileShader(shader);
  GLint ok = 0;
  glGetShaderiv(shader, GL_COMPILE_STATUS, &ok);
  if (!ok) {
    char log[512] = {0};
    glGetShaderInfoLog(shader, sizeof(log), nullptr, log);
    *problem = std::string("a shader does not compile: ") + log;
  }
  return shader;
}

GLuint link(const char* vertex, const char* fragment, std::string* problem) {
  const GLuint program = glCreateProgram();
  const GLuint v = compile(GL_VERTEX_SHADER, vertex, problem),
               f = compile(GL_FRAGMENT_SHADER, fragment, problem);
  glAttachShader(program, v);
  glAttachShader(program, f);
  glLinkProgram(program);
  glDeleteShader(v);
  glDeleteShader(f);
  GLint ok = 0;
  glGetProgramiv(program, GL_LINK_STATUS, &ok);
  if (!ok && problem->empty()) *problem = "the shaders do not link";
  return program;
}

GLint at(GLuint program, const char* name) { return glGetUniformLocation(program, name); }

// Floor and wall corners with a normal and texture coordinates, as the solids carry them.
void addQuad(std::vector<MeshVertex>* out, const MeshVertex (&q)[4]) {
  for (int i : {0, 1, 2, 0, 2, 3}) out->push_back(q[i]);
}

}  // namespace

Renderer::~Renderer() {
  if (!m_program) return;  // never set up: there may be no context to release anything in
  for (const Buffers* b : {&m_floor, &m_walls, &m_lines, &m_quad}) {
    glDeleteBuffers(1, &b->vbo);
    glDeleteVertexArrays(1, &b->vao);
  }
  for (const Buffers& b : m_objects) {
    glDeleteBuffers(1, &b.vbo);
    glDeleteVertexArrays(1, &b.vao);
  }
  for (const auto& t : m_textures) glDeleteTextures(1, &t.second);
  glDeleteProgram(m_program);
  glDeleteProgram(m_imageProgram);
}

bool Renderer::init(std::string* problem) {
  problem->clear();
  m_program = link(kVertexShader, kFragmentShader, problem);
  m_imageProgram = link(kImageVertexShader, kImageFragmentShader, problem);
  const float corners[] = {0, 0, 1, 0, 1, 1, 0, 0, 1, 1, 0, 1};
  glGenVertexArrays(1, &m_quad.vao);
  glGenBuffers(1, &m_quad.vbo);
  glBindVertexArray(m_quad.vao);
  glBindBuffer(GL_ARRAY_BUFFER, m_quad.vbo);
  glBufferData(GL_ARRAY_BUFFER, sizeof(corners), corners, GL_STATIC_DRAW);
  glEnableVertexAttribArray(0);
  glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 2 * sizeof(float), nullptr);
  m_quad.count = 6;
  glBindVertexArray(0);
  return problem->empty();
}

Renderer::Buffers Renderer::upload(const void* data, std::size_t bytes, int count, bool dynamic) {
  Buffers b;
  glGenVertexArrays(1, &b.vao);
  glGenBuffers(1, &b.vbo);
  glBindVertexArray(b.vao);
  glBindBuffer(GL_ARRAY_BUFFER, b.vbo);
  glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(bytes), data,
               dynamic ? GL_DYNAMIC_DRAW : GL_STATIC_DRAW);
  const GLsizei stride = sizeof(MeshVertex);
  glEnableVertexAttribArray(0);
  glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, stride,
                        reinterpret_cast<void*>(offsetof(MeshVertex, position)));
  glEnableVertexAttribArray(1);
  glVertexAttribPointer(1, 3, GL_FLOAT, GL_FALSE, stride,
                        reinterpret_cast<void*>(offsetof(MeshVertex, normal)));
  glEnableVertexAttribArray(2);
  glVertexAttribPointer(2, 2, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<void*>(offsetof(MeshVertex, uv)));
  glBindVertexArray(0);
  b.count = count;
  return b;
}

unsigned int Renderer::texture(const std::string& path, Messages& messages) {
  if (path.empty()) return 0;
  const auto found = m_textures.find(path);
  if (found != m_textures.end()) return found->second;
  int w = 0, h = 0, channels = 0;
  // Texture coordinates have v = 0 at the bottom of a picture; image rows run top down.
  stbi_set_flip_vertically_on_load(1);
  unsigned char* pixels = stbi_load(path.c_str(), &w, &h, &channels, 4);
  GLuint id = 0;
  if (pixels) {
    glGenTextures(1, &id);
    glBindTexture(GL_TEXTURE_2D, id);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, w, h, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    glGenerateMipmap(GL_TEXTURE_2D);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    stbi_image_free(pixels);
  } else {
    messages.report(kMsgTexture, path, stbi_failure_reason() ? stbi_failure_reason() : "");
  }
  m_textures[path] = id;
  return id;
}

void Renderer::load(World& world, Messages& messages) {
  const Layout& r = world.layout();
  std::vector<MeshVertex> floor, walls;
  const float m = 40.0f;  // the floor runs on beyond the walls
  addQuad(&floor, {{{r.minX - m, 0, r.minZ - m}, {0, 1, 0}, {0, 0}},
                   {{r.maxX + m, 0, r.minZ - m}, {0, 1, 0}, {1, 0}},
                   {{r.maxX + m, 0, r.maxZ + m}, {0, 1, 0}, {1, 1}},
                   {{r.minX - m, 0, r.maxZ + m}, {0, 1, 0}, {0, 1}}});
  const float xs[] = {r.minX, r.maxX, r.maxX, r.minX}, zs[] = {r.minZ, r.minZ, r.maxZ, r.maxZ};
  for (int i = 0; i < 4; ++i) {
    const int j = (i + 1) % 4;
    const float nx = zs[j] - zs[i], nz = xs[i] - xs[j];
    addQuad(&walls, {{{xs[i], 0, zs[i]}, {nx, 0, nz}, {0, 0}},
                     {{xs[j], 0, zs[j]}, {nx, 0, nz}, {1, 0}},
                     {{xs[j], kWallHeight, zs[j]}, {nx, 0, nz}, {1, 1}},
                     {{xs[i], kWallHeight, zs[i]}, {nx, 0, nz}, {0, 1}}});
  }
  m_floor = upload(floor.data(), floor.size() * sizeof(MeshVertex), static_cast<int>(floor.size()), false);
  m_walls = upload(walls.data(), walls.size() * sizeof(MeshVertex), static_cast<int>(walls.size()), false);
  m_lines = upload(nullptr, 0, 0, true);
  for (const auto& object : world.objects()) {
    const Mesh& mesh = object->mesh;
    m_objects.push_back(upload(mesh.vertices.data(), mesh.vertices.size() * sizeof(MeshVertex),
                               static_cast<int>(mesh.vertices.size()), false));
    std::array<unsigned int, 3> textures{};
    for (int g = 0; g < kGroupCount; ++g) textures[g] = texture(mesh.textures[g], messages);
    m_objectTextures.push_back(textures);
  }
}

void Renderer::setModel(const float* p, float heading, float scale) {
  const float c = std::cos(heading) * scale, s = std::sin(heading) * scale;
  // Columns: the frame's x, y and z axes turned by the heading, then the position.
  const float model[16] = {c, 0, -s, 0, 0, scale, 0, 0, s, 0, c, 0, p[0], p[1], p[2], 1};
  glUniformMatrix4fv(at(m_program, "uModel"), 1, GL_FALSE, model);
}

void Renderer::draw(World& world, const std::array<float, 16>& clip, int left, int width, int height,
                    int frame) {
  glViewport(0, 0, left + width, height);
  glClearColor(0.17f, 0.21f, 0.29f, 1.0f);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glViewport(left, 0, width, height);
  glEnable(GL_DEPTH_TEST);
  glDisable(GL_CULL_FACE);
  glUseProgram(m_program);
  glUniformMatrix4fv(at(m_program, "uClip"), 1, GL_FALSE, clip.data());
  const _D3DVECTOR eye = world.walker().state().position;
  glUniform3f(at(m_program, "uEye"), eye.x, eye.y, eye.z);
  glUniform1i(at(m_program, "uTexture"), 0);
  glUniform1f(at(m_program, "uHighlight"), 0.0f);
  glUniform1i(at(m_program, "uTextured"), 0);
  const float origin[3] = {0, 0, 0};
  setModel(origin, 0.0f, 1.0f);
  glUniform1i(at(m_program, "uMode"), kFloor);
  glUniform3f(at(m_program, "uColour"), 0.58f, 0.54f, 0.49f);
  drawRoom(0);
  glUniform1i(at(m_program, "uMode"), kLit);
  glUniform3f(at(m_program, "uColour"), 0.74f, 0.77f, 0.84f);
  drawRoom(1);
  drawFootprints(world);
  drawObjects(world, frame);
  glBindVertexArray(0);
  glUseProgram(0);
}

void Renderer::drawRoom(int part) {
  const Buffers& b = part == 0 ? m_floor : m_walls;
  glBindVertexArray(b.vao);
  glDrawArrays(GL_TRIANGLES, 0, b.count);
}

void Renderer::drawObjects(World& world, int frame) {
  const auto& objects = world.objects();
  for (std::size_t i = 0; i < objects.size() && i < m_objects.size(); ++i) {
    const SceneObject& o = *objects[i];
    const float p[3] = {o.position.x, o.position.y, o.position.z};
    setModel(p, o.heading, o.scale);
    // The selected object glows, gently pulsing with the frame count (so replays look alike).
    const float pulse = o.selected ? 0.28f + 0.1f * std::sin(frame * 0.12f) : 0.0f;
    glUniform1f(at(m_program, "uHighlight"), pulse);
    const Colour colour = categoryColour(o.category);
    glBindVertexArray(m_objects[i].vao);
    for (int g = 0; g < kGroupCount; ++g) {
      if (o.mesh.count[g] == 0) continue;
      const unsigned int t = m_objectTextures[i][g];
      glUniform1i(at(m_program, "uTextured"), t ? 1 : 0);
      if (t)
        glUniform3f(at(m_program, "uColour"), 1.0f, 1.0f, 1.0f);
      else
        glUniform3f(at(m_program, "uColour"), colour.r, colour.g, colour.b);
      glBindTexture(GL_TEXTURE_2D, t);
      glDrawArrays(GL_TRIANGLES, o.mesh.first[g], o.mesh.count[g]);
    }
  }
  glUniform1f(at(m_program, "uHighlight"), 0.0f);
  glUniform1i(at(m_program, "uTextured"), 0);
}

void Renderer::drawFootprints(World& world) {
  // Every outline the viewer is kept out of, drawn on the floor; the selected one brighter.
  for (int pass = 0; pass < 2; ++pass) {
    m_lineData.clear();
    for (const auto& object : world.objects()) {
      if (object->selected != (pass == 1)) continue;
      CKFootPrint& fp = object->footprint;
      for (int ok = fp.FPSelectFirstEdge(); ok; ok = fp.FPSelectNextEdgeNoWrap()) {
        _D3DVECTOR a{}, b{};
        fp.FPGetEdgeFromVector(&a);
        fp.FPGetEdgeToVector(&b);
        for (const _D3DVECTOR& v : {a, b})
          m_lineData.insert(m_lineData.end(), {v.x, 0.01f, v.z, 0, 1, 0, 0, 0});
      }
    }
    if (m_lineData.empty()) continue;
    glBindVertexArray(m_lines.vao);
    glBindBuffer(GL_ARRAY_BUFFER, m_lines.vbo);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(m_lineData.size() * sizeof(float)),
                 m_lineData.data(), GL_DYNAMIC_DRAW);
    glUniform1i(at(m_program, "uMode"), kFlat);
    if (pass == 0)
      glUniform3f(at(m_program, "uColour"), 0.36f, 0.33f, 0.30f);
    else
      glUniform3f(at(m_program, "uColour"), 1.0f, 0.84f, 0.32f);
    glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(m_lineData.size() / 8));
  }
  glUniform1i(at(m_program, "uMode"), kLit);
}

void Renderer::drawLabels(World& world, int left, int width, int height) {
  struct Label {
    float distance;
    ImVec2 at, size;
    const SceneObject* object;
  };
  std::vector<Label> labels;
  CKTrans& camera = world.walker().camera();
  const _D3DVECTOR eye = world.walker().state().position;
  for (const auto& object : world.objects()) {
    const SceneObject& o = *object;
    const float distance = std::hypot(o.position.x - eye.x, o.position.z - eye.z);
    const _D3DVECTOR top = {o.position.x, o.position.y + o.mesh.max.y * o.scale + 0.3f, o.position.z};
    float x = 0, y = 0;
    if ((distance > kLabelDistance && !o.selected) || !worldToPixel(camera, width, height, top, &x, &y))
      continue;
    const ImVec2 size = ImGui::CalcTextSize(o.name.c_str());
    if (x + size.x < 0 || x - size.x > width || y < 0 || y - size.y > height) continue;
    labels.push_back({o.selected ? -1.0f : distance, {left + x - size.x * 0.5f, y - size.y}, size, &o});
  }
  // Nearest first; a name that would cover a nearer one is left out, the selected one never.
  std::sort(labels.begin(), labels.end(),
            [](const Label& a, const Label& b) { return a.distance < b.distance; });
  std::vector<ImVec4> taken;
  ImDrawList* list = ImGui::GetBackgroundDrawList();
  for (const Label& l : labels) {
    const ImVec4 box = {l.at.x - 4, l.at.y - 2, l.at.x + l.size.x + 4, l.at.y + l.size.y + 2};
    const bool covers = std::any_of(taken.begin(), taken.end(), [&](const ImVec4& t) {
      return box.x < t.z && t.x < box.z && box.y < t.w && t.y < box.w;
    });
    if (covers) continue;
    taken.push_back(box);
    list->AddRectFilled({box.x, box.y}, {box.z, box.w}, IM_COL32(16, 18, 24, 170), 4.0f);
    list->AddText(l.at, l.object->selected ? IM_COL32(255, 214, 82, 255) : IM_COL32(240, 242, 248, 255),
                  l.object->name.c_str());
  }
}

void Renderer::drawImage(unsigned int image, int x, int y, int w, int h, int viewWidth, int viewHeight) {
  glViewport(0, 0, viewWidth, viewHeight);
  glDisable(GL_DEPTH_TEST);
  glUseProgram(m_imageProgram);
  // Pixels (y down) to clip space; the image's first row is its top.
  const float rect[4] = {2.0f * x / viewWidth - 1.0f, 1.0f - 2.0f * y / viewHeight, 2.0f * w / viewWidth,
                         -2.0f * h / viewHeight};
  glUniform4fv(at(m_imageProgram, "uRect"), 1, rect);
  glUniform1i(at(m_imageProgram, "uTexture"), 0);
  glBindTexture(GL_TEXTURE_2D, image);
  glBindVertexArray(m_quad.vao);
  glDrawArrays(GL_TRIANGLES, 0, m_quad.count);
  glBindVertexArray(0);
  glUseProgram(0);
}

bool Renderer::savePng(const std::string& path, int width, int height) {
  std::vector<unsigned char> pixels(static_cast<std::size_t>(width) * height * 4);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadBuffer(GL_BACK);
  glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
  for (std::size_t i = 3; i < pixels.size(); i += 4) pixels[i] = 255;
  // OpenGL's rows run bottom up; a picture's top down.
  stbi_flip_vertically_on_write(1);
  return stbi_write_png(path.c_str(), width, height, 4, pixels.data(), width * 4) != 0;
}

}  // namespace kview
