// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// kutil-view: a folder or scene list as a room to walk through, every object run by its behaviour.
// The frame loop: input (keys, clicks or a recording), one frame of library work, drawing.
#include <SDL.h>
#include <epoxy/gl.h>
#include <imgui.h>
#include <imgui_impl_opengl3.h>
#include <imgui_impl_sdl.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>

#include "Input.h"
#include "Options.h"
#include "Panel.h"
#include "Picking.h"
#include "Renderer.h"
#include "Report.h"
#include "Settings.h"
#include "Splash.h"
#include "World.h"

namespace kview {
namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

class App {
 public:
  explicit App(const Options& options) : m_options(options), m_world(m_messages) {}
  ~App();
  App(const App&) = delete;
  App& operator=(const App&) = delete;
  int run();

 private:
  bool openWindow();
  void loadScene();
  std::vector<InputCommand> gatherInput(bool* quit);
  void addClick(const Actions& actions, std::vector<InputCommand>* commands);
  void drawFrame(bool last);
  void finish();

  Options m_options;
  Settings m_settings;
  Messages m_messages;
  World m_world;
  std::unique_ptr<Renderer> m_renderer;  // both hold OpenGL objects: released before the context
  std::unique_ptr<Splash> m_splash;
  Panel m_panel;
  PanelRequests m_panelRequests;
  Recorder m_recorder;
  Player m_player;
  Timings m_timings;
  SDL_Window* m_window = nullptr;
  SDL_GLContext m_context = nullptr;
  int m_width = 0, m_height = 0;
  int m_viewLeft = 0;  // the room is drawn right of the panel, centred in what stays visible
  int viewWidth() const { return std::max(m_width - m_viewLeft, 1); }
  bool m_panelVisible = true;
  bool m_imgui = false;
};

App::~App() {
  if (m_imgui) {
    ImGui_ImplOpenGL3_Shutdown();
    ImGui_ImplSDL2_Shutdown();
    ImGui::DestroyContext();
  }
  m_splash.reset();
  m_renderer.reset();
  if (m_context) SDL_GL_DeleteContext(m_context);
  if (m_window) SDL_DestroyWindow(m_window);
  SDL_Quit();
}

bool App::openWindow() {
  if (SDL_Init(SDL_INIT_VIDEO) != 0) {
    std::fprintf(stderr, "kutil-view: no display to open a window on (%s).\n", SDL_GetError());
    return false;
  }
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 3);
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 3);
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_CORE);
  SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
  SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
  const std::string title = "kutil-view: " + m_options.path;
  m_window = SDL_CreateWindow(title.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, m_settings.width,
                              m_settings.height, SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE);
  if (m_window) m_context = SDL_GL_CreateContext(m_window);
  std::string problem;
  m_renderer = std::make_unique<Renderer>();
  if (!m_context || epoxy_gl_version() < 33)
    problem = "no OpenGL 3.3 core context could be made";
  else if (!m_renderer->init(&problem))
    problem = "the drawing could not be set up: " + problem;
  if (!problem.empty()) {
    std::fprintf(stderr, "kutil-view: %s.\n", problem.c_str());
    return false;
  }
  // A headless run goes as fast as it can; an interactive one keeps to the display's rate.
  SDL_GL_SetSwapInterval(m_options.frames > 0 ? 0 : 1);
  IMGUI_CHECKVERSION();
  ImGui::CreateContext();
  ImGui::GetIO().IniFilename = nullptr;  // nothing written into the working directory
  ImGui::StyleColorsDark();
  ImGui_ImplSDL2_InitForOpenGL(m_window, m_context);
  ImGui_ImplOpenGL3_Init("#version 330 core");
  m_imgui = true;
  return true;
}

void App::loadScene() {
  SDL_GL_GetDrawableSize(m_window, &m_width, &m_height);
  m_splash = std::make_unique<Splash>();
  m_splash->init();
  const std::string title = "Loading " + std::filesystem::path(m_options.path).filename().string();
  auto last = Clock::now();
  // The painter shows progress while each shape is generated; repainting is kept to about 30 a second.
  auto progress = [&](int done, int total, const std::string& name) {
    if (done < total && millisecondsSince(last) < 33.0) return;
    last = Clock::now();
    m_splash->show(*m_renderer, title, name, done, total, m_width, m_height);
    SDL_GL_SwapWindow(m_window);
    SDL_PumpEvents();
  };
  m_splash->show(*m_renderer, title, "reading the folder", -1, 100, m_width, m_height);
  SDL_GL_SwapWindow(m_window);
  m_world.load(m_options.path, progress);
  m_renderer->load(m_world, m_messages);
}

void App::addClick(const Actions& actions, std::vector<InputCommand>* commands) {
  int windowWidth = 0, windowHeight = 0;
  SDL_GetWindowSize(m_window, &windowWidth, &windowHeight);
  const float sx = windowWidth > 0 ? static_cast<float>(m_width) / windowWidth : 1.0f;
  const float sy = windowHeight > 0 ? static_cast<float>(m_height) / windowHeight : 1.0f;
  _D3DVECTOR origin{}, direction{};
  if (!pixelRay(m_world.walker().camera(), viewWidth(), m_height, actions.clickX * sx - m_viewLeft,
                actions.clickY * sy, &origin, &direction)) {
    return;
  }
  const Pick pick = pickObject(m_world.objects(), origin, direction);
  if (pick.object < 0) {
    if (m_world.selected() >= 0)
      commands->push_back({KAR_EVENT_DESELECT, 0, m_world.objects()[m_world.selected()]->name});
    return;
  }
  SceneObject& object = *m_world.objects()[pick.object];
  markHitFace(object, pick.face);
  commands->push_back({actions.doubleClick ? KAR_EVENT_OPEN : KAR_EVENT_SELECT, 0, object.name});
}

std::vector<InputCommand> App::gatherInput(bool* quit) {
  Actions actions;
  const ImGuiIO& io = ImGui::GetIO();
  for (SDL_Event e; SDL_PollEvent(&e);) {
    ImGui_ImplSDL2_ProcessEvent(&e);
    Input::handle(e, io.WantCaptureMouse, io.WantCaptureKeyboard, &actions);
  }
  *quit = actions.quit;
  if (actions.togglePanel) m_panelVisible = !m_panelVisible;
  if (actions.saveViewpoint || m_panelRequests.saveViewpoint) m_world.saveViewpoint();
  std::vector<InputCommand> commands;
  InputCommand played;
  if (m_player.active()) {
    // A recording drives the run alone, one command a frame, so a replay is the same every time.
    if (m_player.next(&played)) commands.push_back(played);
  } else {
    Input::heldMotions(io.WantCaptureKeyboard, &commands);
    commands.insert(commands.end(), actions.commands.begin(), actions.commands.end());
    commands.insert(commands.end(), m_panelRequests.commands.begin(), m_panelRequests.commands.end());
    const int jump = actions.jump >= 0 ? actions.jump : m_panelRequests.jump;
    tagMarkerItem marker{};
    if (jump >= 0 && m_world.viewpoints().get(jump, &marker))
      commands.push_back({KAR_CMD_GOTO, 0, marker.name});
    if (actions.click) addClick(actions, &commands);
  }
  m_panelRequests = PanelRequests();
  if (commands.empty()) m_recorder.store({0, 0, ""});  // a frame without input keeps the timing
  for (const InputCommand& c : commands) m_recorder.store(c);
  return commands;
}

void App::drawFrame(bool last) {
  const auto start = Clock::now();
  SDL_GL_GetDrawableSize(m_window, &m_width, &m_height);
  ImGui_ImplOpenGL3_NewFrame();
  ImGui_ImplSDL2_NewFrame();
  ImGui::NewFrame();
  m_viewLeft = 0;
  if (m_panelVisible) {
    const float right = m_panel.draw(m_world, m_timings, m_settings, &m_panelRequests);
    m_viewLeft = std::clamp(static_cast<int>(right), 0, m_width / 2);
  }
  m_world.walker().aim(viewWidth(), m_height);
  m_renderer->drawLabels(m_world, m_viewLeft, viewWidth(), m_height);
  ImGui::Render();
  m_renderer->draw(m_world, clipMatrix(m_world.walker().camera(), viewWidth(), m_height), m_viewLeft,
                   viewWidth(), m_height, m_world.frames());
  ImGui_ImplOpenGL3_RenderDrawData(ImGui::GetDrawData());
  if (last && !m_options.screenshot.empty() && !Renderer::savePng(m_options.screenshot, m_width, m_height)) {
    std::fprintf(stderr, "kutil-view: the screenshot could not be written to %s.\n",
                 m_options.screenshot.c_str());
  }
  SDL_GL_SwapWindow(m_window);
  // Waiting for the frame to be drawn keeps a software renderer's threads out of the next frame's
  // library work, so the panel's split shows each part's own cost.
  glFinish();
  m_timings.drawMs.push_back(millisecondsSince(start));
}

int App::run() {
  m_settings = loadSettings();
  if (m_options.width > 0) m_settings.width = m_options.width, m_settings.height = m_options.height;
  if (m_options.speed > 0.0f) m_settings.walkSpeed = m_options.speed;
  m_messages.open(m_options.messages, m_options.log.empty() ? defaultLogPath() : m_options.log);
  if (!openWindow()) return kExitFailed;
  loadScene();
  m_world.setLaunch(m_options.launch);
  m_world.setSound(!m_options.mute);
  m_world.walker().setWalkSpeed(m_settings.walkSpeed);
  _D3DVECTOR place{};
  float heading = 0.0f;
  if (m_options.play.empty() &&
      loadPosition(std::filesystem::absolute(m_options.path).lexically_normal().string(), &place, &heading)) {
    ViewerState state;
    state.position = place;
    state.heading = heading;
    m_world.placeViewer(state);  // where the viewer left off, unless that is no longer clear
  }
  if (!m_options.play.empty() && !m_player.open(m_options.play))
    m_messages.report(kMsgRecording, m_options.play, "");
  if (!m_options.record.empty() && !m_recorder.open(m_options.record))
    m_messages.report(kMsgRecording, m_options.record,
                      "it cannot be written, or it holds something else, which is kept");
  for (bool quit = false; !quit;) {
    SDL_GL_GetDrawableSize(m_window, &m_width, &m_height);
    m_world.walker().aim(viewWidth(), m_height);  // clicks are picked through this frame's camera
    const std::vector<InputCommand> input = gatherInput(&quit);
    const auto start = Clock::now();
    m_world.frame(input);
    m_timings.libraryMs.push_back(millisecondsSince(start));
    const bool last = quit || (m_options.frames > 0 && m_world.frames() >= m_options.frames);
    drawFrame(last);
    quit = last;
  }
  finish();
  return kExitOk;
}

void App::finish() {
  m_recorder.close();
  SDL_GetWindowSize(m_window, &m_settings.width, &m_settings.height);
  if (!m_options.report.empty() &&
      !writeReport(m_options.report, m_world, m_timings, m_settings.width, m_settings.height)) {
    std::fprintf(stderr, "kutil-view: the report could not be written to %s.\n", m_options.report.c_str());
  }
  saveSettings(m_settings);
  if (m_options.play.empty()) {
    const ViewerState& s = m_world.walker().state();
    savePosition(std::filesystem::absolute(m_options.path).lexically_normal().string(), s.position,
                 s.heading);
  }
}

}  // namespace
}  // namespace kview

int main(int argc, char** argv) {
  kview::Options options;
  const int status = kview::parseOptions(argc, argv, &options);
  if (status >= 0) return status;
  try {
    return kview::App(options).run();
  } catch (const std::exception& e) {
    std::fprintf(stderr, "kutil-view: unexpected failure: %s.\n", e.what());
    return kview::kExitFailed;
  }
}
