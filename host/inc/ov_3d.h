// Faces in space: the drawing calls of the host that make, read and show them.
//
// A face list is a set of arrays that run in parallel over the points of all faces. A face repeats its first
// point at the end. Coordinates are 3D lengths of the host, made from the drawing's by Uo3dWertUserToNm; the
// reference host's are lengths of the drawing, which is what brings them back to the last bit.
//
//   faceEnds   running point count: face k ends ahead of point faceEnds[k]
//   ops        1: an edge runs to this point; 0 at the first point of a face, and where none does. A face
//              that has 0 at a later point encloses nothing: it is a run of edges
//   invisible  1: the edge that ends at this point isn't shown
//
// Every function gives 0 on success and an error number otherwise; small values go by pointer.
#pragma once

/// Host notification: 0 after each INSERT and after a change of scale.
int ov3dfunc(int* code);

/// Adds a face list to a pattern. `typeCode` and `one` are what callers give; `none1` to `none3` are null.
/// 1005 for a pattern that doesn't exist, 3011 for arrays that contradict each other or aren't finite.
int ov3dgenflaeche(int* typeCode, int* pattern, int* one, int* faceCount, int* faceEnds, double* x, double* y,
                   double* z, double* none1, double* none2, double* none3, int* ops, int* pens,
                   int* lineTypes, int* invisible, int* facePens);
/// Operations on the 3D faces of a pattern. 205: joins the faces of *patNo to one surface set.
int ov3dgenflaeche(int* code, int* patNo);

/// Reads the 3D data of a pattern (mode 20): faces, facets and, as runs of edges, curves. The arrays are the
/// host's and hold up to the next call; they may be changed. A face has 4 or 5 entries: three or four corners
/// and the first again; one of more corners comes in triangles. `facePen` 0 marks a run of edges, whose pens
/// and line types are the edges'. 1005 when the pattern has none.
int ov3dleseflaechen(int* mode, int* pattern, int* one, int* polygonCount, int** ends, double** x, double** y,
                     double** z, double** none1, double** none2, double** none3, int** edgeKind,
                     int** edgePen, int** edgeLt, int** hidden, int** facePen);

/// Tolerance of face generation: 5 reads, 6 sets.
int ov3dgenepsi(int* code, double* tolerance);
/// Sets the tolerance and gives back the one that it replaces.
int ov3dgenepsi(double* tolerance);

/// 1: draws what can be seen of the 3D data of pattern *fromPat, looked at along the normal of its work
/// plane, into pattern *toPat, in the pens and line types of the edges.
int ov3dhidden(int* code, int* fromPat, int* toPat);

/// A length of the drawing to one of the host in space, in place. ovform gives the factor between the two as
/// the product of its third and fifth value.
void Uo3dWertUserToNm(double* value);
/// 20: facets of a round surface in a full turn.
int Uo3dAufloesung(int code, int* resolution);
/// Prepares a pattern to carry faces; `*result` is the pattern that does.
int Uo3dInitSonder(int kind, double height, int pattern, int flags, int* result);

/// The face list of an upright cylinder's wall about the z axis: its foot at z 0 begins at angle 0 and runs
/// counter-clockwise through `span` radians, 0 a full turn. Without a height it is the run of its edges.
/// The arrays are the caller's, who frees them with UtFreeMemory; the three further ones stay null. 3011 for
/// values that make none.
int UoGen3DZylinder(int resolution, double height, double radius, double span, int flags, double** x,
                    double** y, double** z, double** none1, double** none2, double** none3, int** pens,
                    int** lineTypes, int** invisible, int** ops, int** faceEnds, int* faceCount, int* total);
