// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Panel.h"

#include <imgui.h>

#include <algorithm>
#include <cfloat>
#include <string>

#include "Report.h"
#include "Settings.h"
#include "World.h"

namespace kview {
namespace {

constexpr int kPlotted = 240;

// The latest values of a series, as floats for the plot.
std::vector<float> tail(const std::vector<double>& values) {
  const std::size_t n = std::min<std::size_t>(values.size(), kPlotted);
  return std::vector<float>(values.end() - static_cast<std::ptrdiff_t>(n), values.end());
}

void plot(const char* label, const std::vector<double>& series) {
  const std::vector<float> points = tail(series);
  const double last = series.empty() ? 0.0 : series.back();
  const std::string overlay =
      std::to_string(last).substr(0, 5) + " ms, median " + std::to_string(median(series)).substr(0, 5);
  ImGui::PlotLines(label, points.data(), static_cast<int>(points.size()), 0, overlay.c_str(), 0.0f, FLT_MAX,
                   {0, 42});
}

}  // namespace

float Panel::draw(World& world, const Timings& timings, Settings& settings, PanelRequests* out) {
  const ImVec2 view = ImGui::GetIO().DisplaySize;
  ImGui::SetNextWindowPos({8, 8}, ImGuiCond_FirstUseEver);
  ImGui::SetNextWindowSize({370, view.y - 16}, ImGuiCond_FirstUseEver);
  ImGui::SetNextWindowBgAlpha(0.86f);
  ImGui::Begin("kutil-view");
  ImGui::TextWrapped("%s", world.source().path.c_str());
  ImGui::Text("%zu objects, frame %d", world.objects().size(), world.frames());
  frameSection(timings);
  viewerSection(world, settings, out);
  objectsSection(world, out);
  selectedSection(world);
  queuesSection(world);
  requestsSection(world);
  messagesSection(world);
  const float right = ImGui::GetWindowPos().x + ImGui::GetWindowSize().x;
  ImGui::End();
  return right;
}

void Panel::frameSection(const Timings& timings) {
  if (!ImGui::CollapsingHeader("Frame time", ImGuiTreeNodeFlags_DefaultOpen)) return;
  plot("library", timings.libraryMs);
  plot("drawing", timings.drawMs);
  ImGui::TextDisabled("library: behaviour ticks and the viewer's steps");
}

void Panel::viewerSection(World& world, Settings& settings, PanelRequests* out) {
  if (!ImGui::CollapsingHeader("Viewer", ImGuiTreeNodeFlags_DefaultOpen)) return;
  const ViewerState& s = world.walker().state();
  ImGui::Text("at (%.2f, %.2f, %.2f), heading %.2f, pitch %.2f", s.position.x, s.position.y, s.position.z,
              s.heading, s.pitch);
  ImGui::Text("bumps %d, frames inside a footprint %d", world.collisions(), world.insideFrames());
  if (ImGui::SliderFloat("walking speed", &settings.walkSpeed, 0.05f, 2.0f, "%.2f")) {
    world.walker().setWalkSpeed(settings.walkSpeed);
  }
  Viewpoints& views = world.viewpoints();
  for (int i = 0; i < views.count() && i < 9; ++i) {
    tagMarkerItem m{};
    if (!views.get(i, &m)) break;
    if (i % 3) ImGui::SameLine();
    const std::string label = std::to_string(i + 1) + " " + m.name;
    if (ImGui::Button(label.c_str())) out->jump = i;
  }
  if (ImGui::Button("Save viewpoint (M)")) out->saveViewpoint = true;
}

void Panel::objectsSection(World& world, PanelRequests* out) {
  if (!ImGui::CollapsingHeader("Objects", ImGuiTreeNodeFlags_DefaultOpen)) return;
  const auto& objects = world.objects();
  const ImGuiTableFlags flags =
      ImGuiTableFlags_ScrollY | ImGuiTableFlags_RowBg | ImGuiTableFlags_BordersInnerV;
  if (!ImGui::BeginTable("objects", 4, flags, {0, 160})) return;
  ImGui::TableSetupScrollFreeze(0, 1);
  ImGui::TableSetupColumn("name");
  ImGui::TableSetupColumn("kind");
  ImGui::TableSetupColumn("runs");
  ImGui::TableSetupColumn("cmds");
  ImGui::TableHeadersRow();
  ImGuiListClipper clipper;
  clipper.Begin(static_cast<int>(objects.size()));
  while (clipper.Step()) {
    for (int i = clipper.DisplayStart; i < clipper.DisplayEnd; ++i) {
      const SceneObject& o = *objects[i];
      ImGui::TableNextRow();
      ImGui::TableSetColumnIndex(0);
      if (ImGui::Selectable(o.name.c_str(), o.selected, ImGuiSelectableFlags_SpanAllColumns)) {
        out->commands.push_back({KAR_EVENT_SELECT, 0, o.name});
      }
      ImGui::TableSetColumnIndex(1);
      ImGui::TextUnformatted(categoryName(o.category));
      ImGui::TableSetColumnIndex(2);
      ImGui::TextUnformatted(o.behaviourSource == "stock" ? "stock" : "own .kvc");
      ImGui::TableSetColumnIndex(3);
      ImGui::Text("%d", o.commands);
    }
  }
  ImGui::EndTable();
}

void Panel::selectedSection(World& world) {
  if (!ImGui::CollapsingHeader("Selected object", ImGuiTreeNodeFlags_DefaultOpen)) return;
  if (world.selected() < 0) {
    ImGui::TextDisabled("click an object (double click opens it)");
    return;
  }
  SceneObject& o = *world.objects()[world.selected()];
  ImGui::Text("%s: %s", categoryName(o.category), o.path.c_str());
  ImGui::Text("shape: %s", o.shapeSource.c_str());
  ImGui::Text("behaviour: %s", o.behaviourSource.c_str());
  ImGui::Text("at (%.2f, %.2f, %.2f), heading %.2f, zoom %.2f", o.position.x, o.position.y, o.position.z,
              o.heading, o.scale);
  ImGui::Separator();
  ImGui::TextDisabled("rows");
  o.behaviour.DEEnableRowNumbering();
  CKActionRow* row = nullptr;
  char text[KDE_ROW_TEXT_SIZE], state[KAR_RUNSTATE_LEN + 1];
  int n = 0;
  for (int ok = o.behaviour.DESelectFirstActionRow(&row); ok; ok = o.behaviour.DESelectNextActionRow(&row)) {
    o.behaviour.DEWriteRow(text, row, n++);
    row->ARGetRunState(state);
    ImGui::TextColored(std::string(state) == "idle" ? ImVec4(0.8f, 0.8f, 0.8f, 1) : ImVec4(1, 0.84f, 0.3f, 1),
                       "%s [%s]", text, state);
  }
  ImGui::Separator();
  ImGui::TextDisabled("commands it emitted, newest first");
  for (auto it = o.recent.rbegin(); it != o.recent.rend(); ++it) {
    ImGui::Text("%5d  %-10s %6.3f %s  %s", it->frame, commandName(it->code).c_str(), it->magnitude,
                it->text.c_str(), it->note.c_str());
  }
}

void Panel::queuesSection(World& world) {
  if (!ImGui::CollapsingHeader("Queues")) return;
  const FrameActivity& a = world.activity();
  ImGui::Text("viewer: %d motion commands this frame", a.viewerCommands);
  ImGui::Text("objects: %d events in, %d commands out, %d dropped (queue full)", a.events, a.emitted,
              a.dropped);
  if (world.selected() >= 0) {
    const SceneObject& o = *world.objects()[world.selected()];
    ImGui::Text("selected: %d commands emitted in all, %d events dropped", o.commands, o.dropped);
  }
}

void Panel::requestsSection(World& world) {
  if (!ImGui::CollapsingHeader("Requests (LOAD, GOTO, RUN, PLAY, PING, ...)", ImGuiTreeNodeFlags_DefaultOpen))
    return;
  ImGui::BeginChild("requests", {0, 110}, true);
  const auto& requests = world.requests();
  for (auto it = requests.rbegin(); it != requests.rend(); ++it) {
    ImGui::TextWrapped("%d %s: %s %s (%s)", it->frame, it->object.c_str(), it->command.c_str(),
                       it->text.c_str(), it->outcome.c_str());
  }
  ImGui::EndChild();
}

void Panel::messagesSection(World& world) {
  const auto& shown = world.messages().shown();
  const std::string title = "Messages (" + std::to_string(shown.size()) + ")###messages";
  if (!ImGui::CollapsingHeader(title.c_str(), ImGuiTreeNodeFlags_DefaultOpen)) return;
  ImGui::BeginChild("messages", {0, 110}, true);
  for (auto it = shown.rbegin(); it != shown.rend(); ++it) {
    ImGui::TextColored({1.0f, 0.6f, 0.45f, 1.0f}, "%s", it->text.c_str());
    ImGui::TextWrapped("  %s%s%s", it->file.c_str(), it->detail.empty() ? "" : ": ", it->detail.c_str());
  }
  ImGui::EndChild();
  if (!world.messages().logFile().empty()) ImGui::TextDisabled("log: %s", world.messages().logFile().c_str());
}

}  // namespace kview
