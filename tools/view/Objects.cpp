// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Objects.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Messages.h"

namespace kview {
namespace {

// "error 6007 at \"MOVE SIDEWAYS BY 2\"": the reader's error id and where its last clause began.
std::string loadError(CKDecide& table) {
  unsigned int id = 0;
  char comment[KDE_COMMENT_LEN + 1] = {0};
  table.DEGetComment(comment);
  std::string detail = table.DEGetErrorID(&id) ? "error " + std::to_string(id) : "a number that is no number";
  if (comment[0]) detail += std::string(" at \"") + comment + "\"";
  return detail;
}

}  // namespace

SceneObject::SceneObject() {
  gen.KVInitialise();
  footprint.FPInitialise();
  input.FIInitialise();
  output.FIInitialise();
  resetBehaviour();
}

void SceneObject::resetBehaviour() {
  behaviour.DEDeleteAllActionRows();
  behaviour.DEInitialise();
  behaviour.DEAttachInputFIFO(&input);
  behaviour.DEAttachOutputFIFO(&output);
  behaviour.DESetItemScaleFactor(1.0f);
}

void SceneObject::load(const SceneEntry& entry, Messages& messages) {
  loadSolid(entry, messages);
  loadBehaviour(entry, messages);
}

void SceneObject::loadSolid(const SceneEntry& entry, Messages& messages) {
  name = entry.name;
  path = entry.path;
  category = entry.category;
  // Without even the stock solid the object stays, with nothing to draw and no footprint.
  if (!loadShape(entry, messages)) mesh = Mesh();
  for (const std::string& texture : mesh.unreadableTextures) {
    messages.reportOnce(kMsgTexture, texture, "named by " + shapeSource);
  }
  if (mesh.endsOmitted) {
    messages.report(kMsgShape, shapeSource,
                    "its seed is too large to fill its end planes; the sides are drawn");
  }
}

bool SceneObject::loadShape(const SceneEntry& entry, Messages& messages) {
  if (!entry.shapePath.empty()) {
    shapeSource = entry.shapePath;
    if (gen.KVRestore(entry.shapePath.c_str()) &&
        buildMesh(&gen, kCellWidth, kCellHeight, entry.shapePath, &mesh)) {
      return true;
    }
    messages.report(kMsgShape, entry.shapePath, "drawn as the stock " + std::string(categoryName(category)));
    gen.KVTerminate();
    gen.KVInitialise();
  }
  shapeSource = "stock";
  return buildStockShape(category, &gen) && buildMesh(&gen, kCellWidth, kCellHeight, entry.path, &mesh);
}

bool SceneObject::loadBehaviourText(const std::string& text) {
  // The reader takes a stream: the stock text is read from memory, as a file would be.
  std::FILE* stream = fmemopen(const_cast<char*>(text.data()), text.size(), "r");
  if (!stream) return false;
  const int ok = behaviour.DELoadFromFile(stream);
  std::fclose(stream);
  return ok != 0;
}

void SceneObject::loadBehaviour(const SceneEntry& entry, Messages& messages) {
  if (!entry.behaviourPath.empty()) {
    behaviourSource = entry.behaviourPath;
    behaviourBase = entry.behaviourPath;
    if (behaviour.DELoadFromFile(entry.behaviourPath.c_str())) {
      unsigned int id = 0;
      // Tokens missing at the ends of lines are recorded but do not stop the load: authors should know.
      if (behaviour.DEGetErrorID(&id))
        messages.report(kMsgBehaviour, entry.behaviourPath, "loaded with " + loadError(behaviour));
      return;
    }
    messages.report(kMsgBehaviour, entry.behaviourPath,
                    loadError(behaviour) + "; the stock behaviour runs instead");
    resetBehaviour();
  }
  behaviourSource = "stock";
  behaviourBase = entry.path;
  if (!loadBehaviourText(stockBehaviour(category, entry.name))) {
    resetBehaviour();
    loadBehaviourText(minimalBehaviour());
  }
}

void SceneObject::place(float x, float z, float newHeading) {
  position = {x, 0.0f, z};
  heading = newHeading;
  updateFootprint();
}

void SceneObject::updateFootprint() {
  if (gen.KVFootPrintFromEnclosingBox(&footprint)) {
    const _D3DVECTOR back = {-mesh.offset.x, -mesh.offset.y, -mesh.offset.z};
    footprint.FPTranslate(&back);
    footprint.FPResize(mesh.fit);
  } else {
    footprint.FPDeleteAllEdges();
    footprint.FPAddVertex(mesh.min.x, 0.0f, mesh.min.z);
    footprint.FPAddVertex(mesh.min.x, 0.0f, mesh.max.z);
    footprint.FPAddVertex(mesh.max.x, 0.0f, mesh.max.z);
    footprint.FPAddVertex(mesh.max.x, 0.0f, mesh.min.z);
  }
  footprint.FPResize(scale);
  footprint.FPRotateHorizontal(heading);
  const _D3DVECTOR at = {position.x, 0.0f, position.z};
  footprint.FPTranslate(&at);
  footprint.FPUpdateVertexDependencies();
  reach = 0.0f;
  _D3DVECTOR corner{};
  for (int ok = footprint.FPSelectFirstEdge(); ok; ok = footprint.FPSelectNextEdgeNoWrap()) {
    footprint.FPGetEdgeFromVector(&corner);
    reach = std::max(reach, std::hypot(corner.x - position.x, corner.z - position.z));
  }
}

std::string commandName(int code) {
  char text[32] = {0};
  if (code == 0) return "NULL";
  if (code == KAR_CMD_RESET) return "RESET";
  if (CKActionRow::ARGetTextForMotionType(code, text) || CKActionRow::ARGetTextForEventType(code, text))
    return text;
  int action = -1;
  switch (code) {
    case KAR_CMD_RUN:
    case KAR_CMD_RUN_NOTEXT:
      action = KAR_ACTION_RUN;
      break;
    case KAR_CMD_PLAY:
      action = KAR_ACTION_PLAY;
      break;
    case KAR_CMD_REPLACE:
      action = KAR_ACTION_REPLACE;
      break;
    case KAR_CMD_LOAD:
      action = KAR_ACTION_LOAD;
      break;
    case KAR_CMD_GOTO:
      action = KAR_ACTION_GOTO;
      break;
    case KAR_CMD_USERGOTO:
      action = KAR_ACTION_USERGOTO;
      break;
    case KAR_CMD_ZOOMIN:
      action = KAR_ACTION_ZOOMIN;
      break;
    case KAR_CMD_ZOOMOUT:
      action = KAR_ACTION_ZOOMOUT;
      break;
    default:
      break;
  }
  if (action >= 0 && CKActionRow::ARGetTextForActionType(action, text)) return text;
  return std::to_string(code);
}

}  // namespace kview
