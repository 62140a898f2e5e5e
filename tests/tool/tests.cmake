# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# The kutil tool on the sample content: outputs compared with expected files, exit statuses,
# OBJ face counts and the error sentences for broken files.
if(NOT KUTIL_BUILD_TOOLS OR NOT EXISTS /usr/include/CLI/CLI.hpp)
  return()
endif()

set(tool_src ${PROJECT_SOURCE_DIR})
set(tool_data ${CMAKE_CURRENT_LIST_DIR}/data)
set(tool_expected ${CMAKE_CURRENT_LIST_DIR}/expected)
set(tool_out ${CMAKE_CURRENT_BINARY_DIR}/tool-out)
set(tool_script ${CMAKE_CURRENT_LIST_DIR}/run_tool.cmake)

# kutil_tool_test(name ARGS a b ... [KEY value ...]): runs the checking script with the settings given.
function(kutil_tool_test name)
  cmake_parse_arguments(T "" "EXPECT_CODE;EXPECT_STDOUT;STDOUT_REGEX;STDERR_REGEX;PRODUCED;EXPECT_FILE;PRODUCED_REGEX;FACES;COPY_FROM;COPY_TO;CLEAN"
    "ARGS;PRE_ARGS;EXISTS;ENVIRONMENT" ${ARGN})
  set(defs -DTOOL=$<TARGET_FILE:kutil>)
  if(CMAKE_CROSSCOMPILING_EMULATOR)
    list(APPEND defs -DEMULATOR=${CMAKE_CROSSCOMPILING_EMULATOR})
  endif()
  foreach(key EXPECT_CODE EXPECT_STDOUT STDOUT_REGEX STDERR_REGEX PRODUCED EXPECT_FILE PRODUCED_REGEX FACES COPY_FROM COPY_TO CLEAN)
    if(DEFINED T_${key})
      list(APPEND defs "-D${key}=${T_${key}}")
    endif()
  endforeach()
  foreach(key ARGS PRE_ARGS EXISTS)
    if(T_${key})
      string(REPLACE ";" "\\;" joined "${T_${key}}")
      list(APPEND defs "-D${key}=${joined}")
    endif()
  endforeach()
  add_test(NAME tool.${name} COMMAND ${CMAKE_COMMAND} ${defs} -P ${tool_script} WORKING_DIRECTORY ${tool_src})
  set_tests_properties(tool.${name} PROPERTIES LABELS tool TIMEOUT 300)
  if(T_ENVIRONMENT)
    set_tests_properties(tool.${name} PROPERTIES ENVIRONMENT "${T_ENVIRONMENT}")
  endif()
endfunction()

# Summaries of every sample file.
kutil_tool_test(check_examples
  ARGS check examples/door.kvc examples/guide.kvc examples/door.ksf examples/pillar.ksf examples/globe.ksf
       examples/hall.ksl examples/hall.mkl examples/walk.rec examples/english.info
  EXPECT_STDOUT ${tool_expected}/check_examples.txt)

# Broken files: one sentence naming the file, the line, the error id and the clause; status 1.
kutil_tool_test(check_broken_motion ARGS check ${tool_data}/broken_motion.kvc EXPECT_CODE 1
  STDERR_REGEX "broken_motion.kvc line 3: error 6007, MOVE with a word that is no motion, at \"MOVE SIDEWAYS BY 2\"\\.")
kutil_tool_test(check_broken_word ARGS check ${tool_data}/broken_word.kvc EXPECT_CODE 1
  STDERR_REGEX "broken_word.kvc line 2: error 6003, [^\n]* at \"JUMP high\"\\.")
kutil_tool_test(check_broken_count ARGS check ${tool_data}/broken_count.kvc EXPECT_CODE 1
  STDERR_REGEX "broken_count.kvc line 1: [^\n]*FOR needs a whole number[^\n]* at \"FOR three\"\\.")
kutil_tool_test(check_warnings ARGS check ${tool_data}/warnings.kvc
  STDOUT_REGEX "3 rows"
  STDERR_REGEX "line 1: error 6005[^\n]*\"PLAY\"[^\n]*\n[^\n]*row 1 [^\n]*no action[^\n]*\n[^\n]*row 3 [^\n]*after an IN row")
kutil_tool_test(check_broken_block ARGS check ${tool_data}/broken_block.ksf EXPECT_CODE 1
  STDERR_REGEX "broken_block.ksf line 4: the tag \\[CMD\\] stands inside a seed vertex block")
kutil_tool_test(check_empty_shape ARGS check ${tool_data}/empty.ksf EXPECT_CODE 1
  STDERR_REGEX "empty.ksf: the shape holds no complete seed vertex block")
kutil_tool_test(check_broken_marker ARGS check ${tool_data}/broken_number.mkl EXPECT_CODE 1
  STDERR_REGEX "broken_number.mkl line 4: the field \\[MKX\\] holds \"abc\", not a number\\.")
kutil_tool_test(check_broken_recording ARGS check ${tool_data}/broken_line.rec EXPECT_CODE 1
  STDERR_REGEX "broken_line.rec line 2: the line has no command")
kutil_tool_test(check_missing_file ARGS check examples/door.kvc ${tool_data}/absent.kvc EXPECT_CODE 1
  STDOUT_REGEX "door.kvc: behaviour" STDERR_REGEX "absent.kvc: the file cannot be read\\.")

kutil_tool_test(check_unended_marker ARGS check ${tool_data}/unended.mkl EXPECT_CODE 1
  STDERR_REGEX "unended.mkl line 2: the marker that begins here has no \\[MKE\\]\\.")
kutil_tool_test(check_partial_info ARGS check ${tool_data}/partial.info STDOUT_REGEX "2 messages"
  STDERR_REGEX "line 2: the line lacks an \\[iid\\] or \\[itx\\] segment[^\n]*\n[^\n]*line 3: the id 112 was given on line 1")
kutil_tool_test(check_missing_name ARGS check ${tool_data}/missing.ksl STDOUT_REGEX "2 names \\(1 missing\\)"
  STDERR_REGEX "missing.ksl line 3: \"\\?KALDOKWQDIR\\?absent.kwq\" names a file that cannot be read\\.")
kutil_tool_test(check_unknown_kind ARGS check examples/oak.bmp EXPECT_CODE 1 STDERR_REGEX "oak.bmp: not a file kutil knows")

# Usage errors exit with 2.
kutil_tool_test(usage_no_subcommand EXPECT_CODE 2 STDERR_REGEX "subcommand")
kutil_tool_test(usage_unknown_option ARGS run examples/door.kvc --bogus EXPECT_CODE 2)
kutil_tool_test(usage_bad_event ARGS run examples/door.kvc --event jump@1 EXPECT_CODE 2
  STDERR_REGEX "--event jump@1 is not NAME@TICK")
kutil_tool_test(usage_bad_tick ARGS run examples/door.kvc --command FORWARD@0 EXPECT_CODE 2)

# The behaviour clock: CALL/RETURN with FOR and BY, an AT row on the first tick, ON rows, PLAYBACK.
kutil_tool_test(run_door ARGS run examples/door.kvc --event open@1 --event select@7 --event collide@8 --ticks 9
  EXPECT_STDOUT ${tool_expected}/run_door.txt)
kutil_tool_test(run_door_json ARGS run examples/door.kvc --event open@1 --command 81@2 --event open@3 --ticks 4 --json
  EXPECT_STDOUT ${tool_expected}/run_door.jsonl)
kutil_tool_test(run_guide_playback ARGS run examples/guide.kvc --event ping@1 --event select@3 --ticks 9
  EXPECT_STDOUT ${tool_expected}/run_guide.txt)
kutil_tool_test(run_passthrough ARGS run examples/guide.kvc --command TURNRIGHT@2 --ticks 2
  STDOUT_REGEX "\n    2     4  TURNRIGHT   0\\.02 ")
# Backslashes of stored Windows paths are escaped in JSON; the trace names each row run.
kutil_tool_test(run_json_escapes ARGS run ${tool_data}/backslash.kvc --event select@1 --ticks 1 --json
  --trace ${tool_out}/backslash.trace
  STDOUT_REGEX "\"command\":\"LOAD\",[^\n]*\"text\":\"C:\\\\\\\\scenes\\\\\\\\hall.kwq\"\\}"
  PRODUCED ${tool_out}/backslash.trace PRODUCED_REGEX "ON select LOAD \\[C:\\\\scenes\\\\hall.kwq\\]")
kutil_tool_test(run_broken ARGS run ${tool_data}/broken_motion.kvc EXPECT_CODE 1 STDERR_REGEX "line 3: error 6007")

# Recordings: stored runs of identical commands, the NULL after a cancelling command dropped.
kutil_tool_test(record ARGS record ${tool_out}/recorded.rec --command 1 --command 1 --command TURNLEFT:4
  --command 0 --command 0 --command 33:0:hall.kwq
  PRODUCED ${tool_out}/recorded.rec EXPECT_FILE ${tool_expected}/recorded.rec
  STDOUT_REGEX "stored 5 commands in 5 lines \\(1 NULL dropped")
kutil_tool_test(record_bad_flags ARGS record ${tool_out}/never.rec --command 1:x EXPECT_CODE 2)
kutil_tool_test(play ARGS play examples/walk.rec EXPECT_STDOUT ${tool_expected}/play_walk.txt)
kutil_tool_test(play_json ARGS play examples/walk.rec --json
  STDOUT_REGEX "^\\{\"index\":1,\"code\":0,\"command\":\"NULL\",\"flags\":-1,\"text\":\"\"\\}\n")

# Shapes: a globe file as the sample holds it, and OBJ exports with their face counts.
kutil_tool_test(globe ARGS globe --segments 12 --rings 8 --radius 1 --out ${tool_out}/globe.ksf
  PRODUCED ${tool_out}/globe.ksf EXPECT_FILE ${tool_src}/examples/globe.ksf)
kutil_tool_test(globe_bad_count ARGS globe --segments 0 --out ${tool_out}/never.ksf EXPECT_CODE 2)
# door: 9 vertices, end planes of 7 triangles each, 9 side faces of two triangles.
kutil_tool_test(shape_door_obj ARGS shape examples/door.ksf --obj ${tool_out}/door.obj
  PRODUCED ${tool_out}/door.obj FACES 32 STDOUT_REGEX "18 vertices, 32 faces")
# pillar: octagon in 6 triangles at each end, 3 planes of 8 side faces.
kutil_tool_test(shape_pillar_obj ARGS shape examples/pillar.ksf --obj ${tool_out}/pillar.obj --size 2
  PRODUCED ${tool_out}/pillar.obj FACES 60 STDOUT_REGEX "\\(closed\\)")
# globe: 12 segments of 8 quads, the pole triangles collapse to one each: 12 * (6 * 2 + 2).
kutil_tool_test(shape_globe_obj ARGS shape examples/globe.ksf --obj ${tool_out}/globe.obj
  PRODUCED ${tool_out}/globe.obj FACES 168 STDOUT_REGEX "side faces only, 168 faces \\(closed\\)")
# The same door drawn clockwise with the other face winding: still closed and wound one way throughout.
kutil_tool_test(shape_clockwise_obj ARGS shape ${tool_data}/door_clockwise.ksf --obj ${tool_out}/clockwise.obj
  PRODUCED ${tool_out}/clockwise.obj FACES 32 STDOUT_REGEX "32 faces \\(closed\\)")
kutil_tool_test(shape_broken ARGS shape ${tool_data}/broken_block.ksf --obj ${tool_out}/broken.obj EXPECT_CODE 1
  STDERR_REGEX "line 4: the tag \\[CMD\\]")
if(WIN32)
  kutil_tool_test(shape_png_unavailable ARGS shape examples/door.ksf --png ${tool_out}/door.png EXPECT_CODE 1
    STDERR_REGEX "PNG export is not available in this build")
else()
  kutil_tool_test(shape_png ARGS shape examples/door.ksf --png ${tool_out}/door.png EXISTS ${tool_out}/door.png)
  kutil_tool_test(splash ARGS splash --text "Loading the hall" --comment "door.ksf" --progress 40
    --out ${tool_out}/splash.png EXISTS ${tool_out}/splash.png STDOUT_REGEX "wrote")
endif()

# Services: messages by id, settings written and read back in a private store.
kutil_tool_test(message ARGS message 112 --sheets examples/english.info STDOUT_REGEX "^File not found\n$")
kutil_tool_test(message_unknown ARGS message 4711 --sheets examples/english.info EXPECT_CODE 1
  STDERR_REGEX "no message with id 4711")
kutil_tool_test(settings ARGS settings get resolution PRE_ARGS settings set Resolution 640
  STDOUT_REGEX "^640\n$" ENVIRONMENT KUTIL_REGISTRY_DIR=${tool_out}/registry)
kutil_tool_test(settings_bad_value ARGS settings set Resolution wide EXPECT_CODE 2
  ENVIRONMENT KUTIL_REGISTRY_DIR=${tool_out}/registry)

# Normalisation: a scene list made absolute and normalised again comes back as it was; gathering
# follows the list into behaviours (their recordings) and shapes (their textures).
kutil_tool_test(normalise_roundtrip ARGS normalise ${tool_out}/norm/hall.ksl
  COPY_FROM ${tool_src}/examples/hall.ksl COPY_TO ${tool_out}/norm/hall.ksl
  PRE_ARGS denormalise ${tool_out}/norm/hall.ksl
  PRODUCED ${tool_out}/norm/hall.ksl EXPECT_FILE ${tool_src}/examples/hall.ksl)
# A behaviour made absolute and normalised again names its files relative to its folder once more
# (stored in the writer's own layout; CALL and PING texts are names, never touched).
kutil_tool_test(normalise_behaviour ARGS normalise ${tool_out}/normkvc/door.kvc
  COPY_FROM ${tool_src}/examples/door.kvc COPY_TO ${tool_out}/normkvc/door.kvc
  PRE_ARGS denormalise ${tool_out}/normkvc/door.kvc
  PRODUCED ${tool_out}/normkvc/door.kvc EXPECT_FILE ${tool_expected}/door_normalised.kvc)
kutil_tool_test(gather ARGS gather examples/hall.ksl --into ${tool_out}/gathered CLEAN ${tool_out}/gathered
  STDOUT_REGEX "gathered examples/hall.ksl"
  EXISTS ${tool_out}/gathered/hall.ksl ${tool_out}/gathered/door.kvc ${tool_out}/gathered/oak.bmp
         ${tool_out}/gathered/walk.rec)

# The demonstration itself, and its refusal to write into the sample folder.
kutil_tool_test(demo ARGS demo examples --out ${tool_out}/demo CLEAN ${tool_out}/demo
  STDOUT_REGEX "9 of 9 files are good.*door selected.*LOOKUP.*168 faces.*File not found"
  EXISTS ${tool_out}/demo/door.obj ${tool_out}/demo/globe.obj)
kutil_tool_test(demo_protects_examples ARGS demo examples --out examples/out EXPECT_CODE 2
  STDERR_REGEX "never writes into the sample folder")
