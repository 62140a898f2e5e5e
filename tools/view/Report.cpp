// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Report.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

#include "World.h"

namespace kview {
namespace {

using nlohmann::json;

json vector3(const _D3DVECTOR& v) { return json::array({v.x, v.y, v.z}); }

json objectsOf(World& world) {
  json list = json::array();
  for (const auto& o : world.objects()) {
    list.push_back({{"name", o->name},
                    {"position", vector3(o->position)},
                    {"heading", o->heading},
                    {"scale", o->scale},
                    {"selected", o->selected},
                    {"commands", o->commands},
                    {"shape", o->shapeSource},
                    {"behaviour", o->behaviourSource}});
  }
  return list;
}

json messagesOf(const Messages& messages) {
  json list = json::array();
  for (const Message& m : messages.shown()) {
    list.push_back({{"id", m.id}, {"text", m.text}, {"file", m.file}, {"detail", m.detail}});
  }
  return list;
}

json requestsOf(World& world) {
  json list = json::array();
  for (const Request& r : world.requests()) {
    list.push_back({{"frame", r.frame},
                    {"object", r.object},
                    {"command", r.command},
                    {"text", r.text},
                    {"outcome", r.outcome}});
  }
  return list;
}

}  // namespace

double median(std::vector<double> values) {
  if (values.empty()) return 0.0;
  const std::size_t mid = values.size() / 2;
  std::nth_element(values.begin(), values.begin() + mid, values.end());
  if (values.size() % 2) return values[mid];
  const double upper = values[mid];
  return (upper + *std::max_element(values.begin(), values.begin() + mid)) / 2.0;
}

bool writeReport(const std::string& path, World& world, const Timings& timings, int width, int height) {
  const ViewerState& viewer = world.walker().state();
  const json report = {{"frames", world.frames()},
                       {"camera", {{"position", vector3(viewer.position)}, {"heading", viewer.heading}}},
                       {"objects", objectsOf(world)},
                       {"collisions", world.collisions()},
                       {"inside_footprint_frames", world.insideFrames()},
                       {"library_ms", median(timings.libraryMs)},
                       {"draw_ms", median(timings.drawMs)},
                       {"window", json::array({width, height})},
                       {"walk_speed", world.walker().walkSpeed()},
                       {"messages", messagesOf(world.messages())},
                       {"requests", requestsOf(world)}};
  std::ofstream out(path);
  // File names need not be UTF-8: bytes that are not become U+FFFD rather than failing the report.
  out << report.dump(2, ' ', false, json::error_handler_t::replace) << '\n';
  return static_cast<bool>(out);
}

}  // namespace kview
