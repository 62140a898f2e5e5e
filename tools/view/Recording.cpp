// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Recording.h"

#include <cstdio>
#include <cstring>

namespace kview {

bool Recorder::open(const std::string& path) {
  // Only an earlier recording is replaced: a scene's own file named by mistake is kept.
  if (std::FILE* old = std::fopen(path.c_str(), "r")) {
    char start[8] = {0};
    const bool other = std::fgets(start, sizeof(start), old) && std::strncmp(start, "[CM]", 4) != 0;
    std::fclose(old);
    if (other) return false;
  }
  // The recorder opens its file only at the first command; find out now whether it can.
  std::FILE* probe = std::fopen(path.c_str(), "w");
  if (!probe) return false;
  std::fclose(probe);
  m_record.IRInitialise();
  m_active = m_record.IRSetFileName(path.c_str(), KIR_MODE_STORE) != 0;
  return m_active;
}

void Recorder::store(const InputCommand& command) {
  if (m_active) m_record.IRStoreCommand(command.code, command.flags, command.text.c_str(), 0);
}

void Recorder::close() {
  if (m_active) m_record.IRTerminate();
  m_active = false;
}

bool Player::open(const std::string& path) {
  if (!KUIsFileReadable(path.c_str())) return false;
  m_record.IRInitialise();
  m_active = m_record.IRSetFileName(path.c_str(), KIR_MODE_PLAY) != 0;
  return m_active;
}

bool Player::next(InputCommand* out) {
  if (!m_active) return false;
  int code = 0, flags = 0;
  char text[KIR_TEXT_LEN + 1] = {0};
  if (!m_record.IRGetCommand(&code, &flags, text)) {
    m_record.IRTerminate();
    m_active = false;
    return false;
  }
  // The first line of every recording is its initial entry (NULL with flags -1): no input.
  out->code = code;
  out->flags = flags < 0 ? 0 : flags;
  out->text = text;
  return true;
}

}  // namespace kview
