// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KVGen.h
/// CKVGen: extruded solids, tessellation, faces and the shape file.
#pragma once
#include <cstdio>

#include "KFootPrint.h"
#include "KGenList.h"
#include "KUtilBase.h"

/// Instruction code: rotate about the instruction's vector through the origin by +magnitude.
#define INSTR_ROTATE_AXIS 0
/// Instruction code: rotate about the previous plane's right edge by +magnitude.
#define INSTR_HINGE_RIGHT 1
/// Instruction code: rotate about the previous plane's left edge by -magnitude.
#define INSTR_HINGE_LEFT 2
/// Instruction code: move along the previous plane's normal by magnitude.
#define INSTR_EXTRUDE 3
/// Instruction code: rotate about the previous plane's top edge by -magnitude.
#define INSTR_HINGE_TOP 4
/// Instruction code: rotate about the previous plane's bottom edge by +magnitude.
#define INSTR_HINGE_BOTTOM 5

/// Edge-detect type: every side face keeps its own footprint.
#define EDGE_DETECT_FACE 0
/// Edge-detect type: only plane outlines and boxes are kept.
#define EDGE_DETECT_BOX 1

/// One vertex of a plane of the solid: its footprint vertex record, its side-face outline and hit mark.
struct tagKExtrudeVertex {
  tagKVertex point;          ///< footprint vertex record: point.position and the tessellation data point.tess
  CKFootPrint* faceOutline;  ///< owned outline of the side face starting here; null unless edge-detect type 0
  int hitFace;               ///< 1 when the side face beginning at this vertex has been hit
  tagKExtrudeVertex* next;   ///< next vertex of the same plane, null at the end
};

/// One plane of the solid (the seed or a generated plane): corners, normal, outline and vertices.
struct tagKExtrudePlane {
  _D3DVECTOR corner0;           ///< image of the seed rectangle's top-left (min x, max y, 0)
  _D3DVECTOR corner1;           ///< image of the top-right (max x, max y, 0)
  _D3DVECTOR corner2;           ///< image of the bottom-left (min x, min y, 0)
  _D3DVECTOR corner3;           ///< image of the bottom-right (max x, min y, 0)
  _D3DVECTOR normal;            ///< plane normal; (0, 0, 1) when the record is made
  int hit;                      ///< 1 when the plane's face has been hit, else 0
  CKFootPrint* outline;         ///< owned footprint of the plane, made with the record
  tagKExtrudeVertex* vertices;  ///< owned vertex list, in seed order
  tagKExtrudePlane* next;       ///< next generated plane (always null in the seed plane)
};

/// One extrusion instruction: a code with its vector and magnitude.
struct tagKExtrudeInstruction {
  int reserved;                  ///< initialised to -1, never read
  int code;                      ///< INSTR_* code; any other value copies the plane unchanged
  _D3DVECTOR vector;             ///< rotation axis for code 0; kept for every code
  float magnitude;               ///< angle in radians for rotations, distance for code 3
  tagKExtrudeInstruction* next;  ///< next instruction, null at the end
};

/// Triangulation of the seed polygon; defined with the tessellation code.
struct KVTessellation;

/// The extruder: a solid made of a seed polygon and a list of instructions, each adding a plane.
///
/// Call KVInitialise before anything else; the destructor calls KVTerminate.
/// Vertex numbers are 0-based positions; negative numbers address vertex 0.
class KUTIL_API CKVGen : public CKFootPrint {
 public:
  /// Does nothing; call KVInitialise.
  CKVGen();
  /// Calls KVTerminate.
  ~CKVGen();
  CKVGen(const CKVGen&) = delete;
  CKVGen& operator=(const CKVGen&) = delete;

  // --- lifecycle -------------------------------------------------------
  /// Initialises the base footprint and sets every field to its initial value; frees nothing. Returns 1.
  int KVInitialise();
  /// Frees the seed, the generated planes, the instructions and the tessellation, then the base. Returns 1.
  int KVTerminate();

  // --- appearance and settings ----------------------------------------
  /// Stores the face-winding choice (0, 1, or -1 for unset). Returns 1.
  int KVSetNormalDirection(int direction);
  /// Copies out the face-winding choice; 0 while it is unset (-1).
  int KVGetNormalDirection(int* direction);
  /// Copies the front texture name (at most 276 characters kept, always terminated). Returns 1.
  int KVSetFrontPlaneTexture(const char* name);
  /// Copies the front texture name into out (capacity 277, always terminated); 0 with out untouched when
  /// empty.
  int KVGetFrontPlaneTexture(char* out);
  /// Copies the back texture name (at most 276 characters kept, always terminated). Returns 1.
  int KVSetBackPlaneTexture(const char* name);
  /// Copies the back texture name into out (capacity 277, always terminated); 0 with out untouched when
  /// empty.
  int KVGetBackPlaneTexture(char* out);
  /// Copies the side-surface texture name (at most 276 characters kept, always terminated). Returns 1.
  int KVSetWrapSurfaceTexture(const char* name);
  /// Copies the side-surface texture name into out (capacity 277, always terminated); 0 with out untouched
  /// when empty.
  int KVGetWrapSurfaceTexture(char* out);
  /// Stores the front texture repeat count. Returns 1.
  int KVSetFrontTiling(int tiling);
  /// Copies out the front texture repeat count. Returns 1.
  int KVGetFrontTiling(int* tiling);
  /// Stores the back texture repeat count. Returns 1.
  int KVSetBackTiling(int tiling);
  /// Copies out the back texture repeat count. Returns 1.
  int KVGetBackTiling(int* tiling);
  /// Stores the side-surface texture repeat count. Returns 1.
  int KVSetWrapTiling(int tiling);
  /// Copies out the side-surface texture repeat count. Returns 1.
  int KVGetWrapTiling(int* tiling);
  /// Copies the front icon index text, at most 16 characters. Returns 1.
  int KVSetFrontIconIndex(const char* index);
  /// Copies the front icon index into out (capacity 17, always terminated); 0 with out untouched when empty.
  int KVGetFrontIconIndex(char* out);
  /// Copies the back icon index text, at most 16 characters. Returns 1.
  int KVSetBackIconIndex(const char* index);
  /// Copies the back icon index into out (capacity 17, always terminated); 0 with out untouched when empty.
  int KVGetBackIconIndex(char* out);
  /// Copies the side-surface icon index text, at most 16 characters. Returns 1.
  int KVSetWrapIconIndex(const char* index);
  /// Copies the side-surface icon index into out (capacity 17, always terminated); 0 with out untouched when
  /// empty.
  int KVGetWrapIconIndex(char* out);
  /// Stores the editing step for moves. Returns 1.
  int KVSetDeltaTranslation(float delta);
  /// Copies out the editing step for moves. Returns 1.
  int KVGetDeltaTranslation(float* delta);
  /// Stores the editing step for turns, in radians. Returns 1.
  int KVSetDeltaRotation(float delta);
  /// Copies out the editing step for turns, in radians. Returns 1.
  int KVGetDeltaRotation(float* delta);
  /// Stores the edge-detect type (EDGE_DETECT_FACE or EDGE_DETECT_BOX). Returns 1.
  int KVSetEdgeDetectType(int type);
  /// Copies out the edge-detect type. Returns 1.
  int KVGetEdgeDetectType(int* type);
  /// 1 exactly when the edge-detect type is 1 (EDGE_DETECT_BOX), else 0.
  int KVIsEdgeDetectBoxType();

  // --- seed list --------------------------------------------------------
  /// Appends a seed vertex (with a face outline under edge-detect type 0), making the seed plane if needed.
  int KVAddSeedVertex(const _D3DVECTOR* point);
  /// Links a new seed vertex (never with a face outline) after the selected one; 0 with no selection.
  int KVInsertAfterSelectedSeedVertex(const _D3DVECTOR* point);
  /// Destroys the selected seed vertex and clears the selection; 0 with no selection.
  int KVDeleteSelectedSeedVertex();
  /// Destroys the seed plane with its vertices and clears the seed selection. Returns 1.
  int KVDeleteSeedList();
  /// Selects the first seed vertex and copies it out; 0 (cursor cleared) when there is none.
  int KVGetFirstSeedVertex(_D3DVECTOR* out);
  /// Selects the last seed vertex and copies it out; 0 (cursor cleared) when there is none.
  int KVGetLastSeedVertex(_D3DVECTOR* out);
  /// Selects the next seed vertex and copies it out; 0 at the end or with no cursor (cursor kept).
  int KVGetNextSeedVertex(_D3DVECTOR* out);
  /// Selects the previous seed vertex and copies it out; 0 at the start or with no cursor (cursor kept).
  int KVGetPrevSeedVertex(_D3DVECTOR* out);
  /// Selects seed vertex n (a negative n selects vertex 0); 0 with the cursor kept when n is beyond the end.
  int KVSelectSeedVertexByNumber(int n);
  /// Selects seed vertex n and copies it out.
  int KVGetSeedVertexByNumber(int n, _D3DVECTOR* out);
  /// Copies out the selected seed vertex; 0 with no selection.
  int KVGetSelectedSeedVertex(_D3DVECTOR* out);
  /// Overwrites the selected seed vertex's position; 0 with no selection.
  int KVUpdateSelectedSeedVertex(const _D3DVECTOR* point);
  /// Hands out the selected seed vertex's tessellation record (borrowed); 0 with no selection.
  int KVGetSelectedSeedVertexTessPointer(tagKTessVertex** out);
  /// Number of seed vertices; 0 (nothing written) when there is none.
  int KVGetNumVertices(int* count);
  /// Replaces the seed by the start points of the footprint's edges; 0 when it has no edge (seed then empty).
  int KVSeedFromFootPrint(CKFootPrint* footprint);

  // --- generated planes and vertices ---------------------------------------
  /// Makes the first generated plane current; 0 (cursor cleared) when there is none.
  int KVSelectFirstGenPlane();
  /// Makes the next generated plane current; 0 at the end (cursor kept).
  int KVSelectNextGenPlane();
  /// Makes the previous generated plane current; 0 at the first plane or with no cursor.
  int KVSelectPrevGenPlane();
  /// Selects the current plane's first vertex (none for an empty plane); 0 only with no current plane.
  int KVSelectFirstGenVertex();
  /// Selects the next vertex of the current plane; 0 at the end, with no current plane or no selection.
  int KVSelectNextGenVertex();
  /// Selects vertex n of the current plane (negative n: vertex 0); on failure the selection is cleared.
  int KVSelectGenVertexByNumber(int n);
  /// Copies out vertex n of the current plane (negative n: vertex 0) without moving the selection.
  int KVGetGenVertexByNumber(int n, _D3DVECTOR* out);
  /// Copies out the selected generated vertex; 0 with no current plane or selection.
  int KVGetSelectedGenVertex(_D3DVECTOR* out);
  /// Overwrites the selected generated vertex's position; 0 with no current plane or selection.
  int KVUpdateSelectedGenVertex(const _D3DVECTOR* point);
  /// Hands out the selected generated vertex's tessellation record (borrowed); 0 with no current plane or
  /// selection.
  int KVGetSelectedGenVertexTessPointer(tagKTessVertex** out);

  // --- instructions -------------------------------------------------------
  /// Appends an instruction; 0 only for lack of memory.
  int KVAddInstruction(int code, const _D3DVECTOR* vector, float magnitude);
  /// Selects the first instruction and copies it out; 0 (cursor cleared) on an empty list.
  int KVGetFirstInstruction(int* code, _D3DVECTOR* vector, float* magnitude);
  /// Selects the next instruction and copies it out; 0 at the end (cursor kept).
  int KVGetNextInstruction(int* code, _D3DVECTOR* vector, float* magnitude);
  /// Destroys the selected instruction and clears the cursor; 0 when nothing valid is selected.
  int KVDeleteSelectedInstruction();
  /// Destroys every instruction. Returns 1.
  int KVDeleteAllInstructions();
  /// Number of instructions; 0 (nothing written) on an empty list.
  int KVGetNumInstructs(int* count);

  // --- validity -------------------------------------------------------------
  /// Level 1: a seed vertex exists; 2: two exist; 3: a vertex exists and the seed tessellates; else 0.
  int KVIsValid(int level);
  /// Writes "  Extruder: footprint." to log (when given) and returns 1; on corruption writes and copies the
  /// error text into error (capacity 37, always terminated) and returns 0.
  int KVCheckIntegrity(char* error, FILE* log);
  /// Width (corner 2 to 3) and height (corner 0 to 2) of the seed rectangle; 0 without seed vertices.
  int KVGetSeedPlaneScale(float* width, float* height);

  // --- extrusion ------------------------------------------------------------
  /// Recomputes the seed plane's bounding rectangle from the seed's x and y; 0 without seed vertices.
  int KVUpdateSeedList2DBox();
  /// Rebuilds the generated planes, one per instruction; an empty instruction list changes nothing.
  /// On failure no generated plane is left.
  int KVGenerate();
  /// Scales every point of the solid by f and mirrors it in x. 0 when an update fails (nothing undone).
  int KVInvertResize(float f);
  /// Rotates the whole solid about (-1, 0, 0) by angle. 0 when an update fails (nothing undone).
  int KVElevate(float angle);
  /// Rotates the whole solid about (0, 0, 1) by angle. 0 when an update fails (nothing undone).
  int KVRoll(float angle);
  /// Rotates the whole solid about (0, 1, 0) by angle. 0 when an update fails (nothing undone).
  int KVRotateHorizontal(float angle);
  /// Moves the whole solid by t. 0 when an update fails (nothing undone).
  int KVTranslate(const _D3DVECTOR* t);
  /// Fills fp with the seed; a non-zero lay puts (x, y, z) down as (x, 0, y). Returns the dependency update.
  int KVFootPrintFromSeed(CKFootPrint* fp, int lay);
  /// Fills fp with the four corners of the selected generated vertex's side face.
  int KVFootPrintFromSelectedFace(CKFootPrint* fp);
  /// Fills fp with the current plane's outline and widens its box over the slab from the previous plane.
  int KVFootPrintFromSelectedGen(CKFootPrint* fp);
  /// Fills fp with a rectangle across the box enclosing the seed and every generated plane.
  int KVFootPrintFromEnclosingBox(CKFootPrint* fp);
  /// Computes the seed's oriented normal (z never positive) into out and sets the seed orientation
  /// (0, 1, or -1 with 0 returned when the first triangle gives no normal).
  int KVCalcSeedNormal(_D3DVECTOR* out);
  /// Computes the current generated plane's normal from the first triangle into out; 0 when it cannot.
  int KVCalcGenPlaneNormal(_D3DVECTOR* out);

  // --- faces, boxes and hits ----------------------------------------------
  /// 1 when face winding is reversed: (normal direction != 0) differs from (seed orientation == 1).
  int KVIsNormalReversalActive();
  /// Corners of the side face between the selected vertex and the next one; 0 for the last vertex.
  int KVGetFrontFace(_D3DVECTOR* c1, _D3DVECTOR* c2, _D3DVECTOR* c3, _D3DVECTOR* c4);
  /// Corners of the side face between the selected vertex and vertex 0 (the closing face).
  int KVGetBackFace(_D3DVECTOR* c1, _D3DVECTOR* c2, _D3DVECTOR* c3, _D3DVECTOR* c4);
  /// 1 when the selected generated vertex's face exists and has area, else 0.
  int KVIsFaceUsable();
  /// Rebuilds the seed outline, every plane outline and (edge-detect type 0) every face outline.
  int KVUpdateVertexDependencies();
  /// Hands out the seed outline's box (borrowed); 0 when it has none.
  int KVGetSeedFaceBox(_D3DRMBOX** box);
  /// Makes the last generated plane current and hands out its outline's box (borrowed).
  int KVGetGenFaceBox(_D3DRMBOX** box);
  /// Hands out the current plane's outline box (borrowed); 0 with no current plane or box.
  int KVGetBoxForCurrentPlane(_D3DRMBOX** box);
  /// Makes the first generated plane current and hands out its outline box (borrowed).
  int KVSelectFirstGenBox(_D3DRMBOX** box);
  /// Makes the next generated plane current and hands out its outline box (borrowed).
  int KVSelectNextGenBox(_D3DRMBOX** box);
  /// Selects the current plane's first vertex and hands out its face outline's box (borrowed).
  int KVSelectFirstFaceBox(_D3DRMBOX** box);
  /// Selects the next vertex of the current plane and hands out its face outline's box (borrowed).
  int KVSelectNextFaceBox(_D3DRMBOX** box);
  /// Marks the seed plane (front end face) hit; 0 without a seed plane.
  int KVSetSeedFaceHit();
  /// Clears the seed plane's hit mark; 0 without a seed plane.
  int KVUnSetSeedFaceHit();
  /// The seed plane's hit mark; 0 without a seed plane.
  int KVIsSeedFaceHit();
  /// Marks the current plane hit; 0 with no current plane.
  int KVSetGenFaceHit();
  /// Clears the current plane's hit mark; 0 with no current plane.
  int KVUnSetGenFaceHit();
  /// The current plane's hit mark; 0 with no current plane.
  int KVIsGenFaceHit();
  /// Marks the selected generated vertex's side face hit; 0 with no current plane or selection.
  int KVSetSelectedHitFace();
  /// Clears the selected generated vertex's side-face mark; 0 with no current plane or selection.
  int KVUnSetSelectedHitFace();
  /// The selected generated vertex's side-face mark; 0 with no current plane or selection.
  int KVIsSelectedHitFace();
  /// Clears every hit mark; the last plane ends current. Returns 1.
  int KVClearHitFaces();
  /// Selects the plane and vertex of the n-th (from 1) hit side face; 0 when there are fewer than n.
  int KVSelectHitFaceByNumber(int n);

  // --- shape file -------------------------------------------------------------
  /// Writes the settings, seed and instructions to a shape file; 0 for an empty path or an unopenable file.
  int KVSave(const char* path);
  /// Empties the generator and reads a shape file; 0 on a bad path or bad content (what was read stays).
  int KVRestore(const char* path);

  // --- tessellation ---
  // Implemented with the tessellation code (vgen/Tessellation.cpp, vgen/VGenTessellate.cpp).
  /// Triangulates the seed polygon; 1 on success, 0 (no tessellation kept) on failure.
  int KVTesselateSeedPlane();
  /// First triangle as vertex numbers (ascending, or reversed under normal reversal); 0 when there is none.
  int KVGetFirstTesselatedTriangle(int* a, int* b, int* c);
  /// Next triangle as vertex numbers; 0 at the end (cursor kept) or when there is none.
  int KVGetNextTesselatedTriangle(int* a, int* b, int* c);
  /// Destroys the tessellation, if any, and clears the pointer.
  void KVDeleteTessellation();
  // --- end of tessellation ---

 private:
  friend struct kutil::detail::Internals<CKVGen>;

  tagKExtrudePlane* m_seedPlane;                  ///< owned seed plane, or null
  tagKExtrudePlane* m_currentPlane;               ///< borrowed cursor over the generated planes
  tagKExtrudeVertex* m_selectedGenVertex;         ///< borrowed cursor over the current plane's vertices
  int m_normalDirection;                          ///< 0, 1, or -1 for unset
  int m_seedOrientation;                          ///< 0 (raw normal z >= 0), 1 (z < 0), -1 unknown
  int m_reserved;                                 ///< not used
  float m_deltaTranslation;                       ///< editing step for moves
  float m_deltaRotation;                          ///< editing step for turns, radians
  char m_frontPlaneTexture[277];                  ///< front texture name
  char m_backPlaneTexture[277];                   ///< back texture name
  char m_wrapSurfaceTexture[277];                 ///< side-surface texture name
  char m_frontIconIndex[17];                      ///< front icon index text
  char m_backIconIndex[17];                       ///< back icon index text
  char m_wrapIconIndex[17];                       ///< side-surface icon index text
  int m_frontTiling;                              ///< front texture repeat count
  int m_backTiling;                               ///< back texture repeat count
  int m_wrapTiling;                               ///< side-surface texture repeat count
  int m_edgeDetectType;                           ///< EDGE_DETECT_FACE or EDGE_DETECT_BOX
  tagKExtrudeVertex* m_selectedSeedVertex;        ///< borrowed cursor over the seed list
  tagKExtrudeInstruction* m_instructions;         ///< owned instruction list
  tagKExtrudeInstruction* m_selectedInstruction;  ///< borrowed cursor over the instructions
  tagKExtrudePlane* m_genPlanes;                  ///< owned generated planes, in instruction order
  KVTessellation* m_tessellation;                 ///< owned triangulation of the seed, or null
};

/// Writes v as "%.4f,%.4f,%.4f" into out (capacity 140 bytes covers any float, always terminated). Returns 1;
/// 0 for null pointers.
KUTIL_API int KUMkVertexSegment(char* out, const _D3DVECTOR* v);
/// Reads "x,y,z" from text into v; 1 only when all three numbers were read (v untouched otherwise).
KUTIL_API int KUExtractVertexSegment(_D3DVECTOR* v, const char* text);
/// Appends a heap copy of v to *list, making and initialising the list when *list is null.
/// The three-float blocks come from malloc; the list never frees them, its owner frees them with free().
KUTIL_API int KUUpdateVertexList(CKGenList** list, const _D3DVECTOR* v);

/// Fills a fresh or terminated generator with a globe's seed (a half circle in the y-z plane) and
/// one rotation about y per segment; 0 (nothing changed) for counts below 1 or a radius not above 0.
KUTIL_API int GKVSeedExtruderGlobe(CKVGen* gen, int segments, int rings, float radius);
/// Writes texture coordinates and positions scaled by size into the tessellation records of the
/// front (end 0, the seed) or back (end 1, the last plane) end plane; 0 for another end.
KUTIL_API int GKVCalculateEndPlaneVertexMappings(CKVGen* gen, int end, int tiling, float size);

/// Puts the texture names of a shape file into path-variable form and saves it back; 1 for an empty
/// or already variablised path.
KUTIL_API int KUConvertKSFToRelative(const char* path);
/// Copies the files a shape file's textures name into target (with its trailing separator) and
/// saves the shape file with the new names; 1 for an empty path.
KUTIL_API int KUCopyKSFFileParts(const char* path, const char* target);
/// 1 when a texture of the shape file is set and resolves against the file's directory, else 0.
KUTIL_API int KUIsKSFFileNormalised(const char* path);
/// Replaces "?KALDOKWQDIR?" in the shape file's textures by directory (and inside named animation files) and
/// saves it; 1 only when something changed and the save succeeded (0 for a null directory).
KUTIL_API int KUDeRelativiseKSF(const char* directory, const char* shapeFile);
