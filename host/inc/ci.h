// The host's drawing classes. Each object is made on a context, whose unit its coordinates are in.
// A context that was given no unit has that of the drawing, whatever it becomes.
// Every method gives 0 on success and an error number otherwise, unless it says so.
#pragma once

#include "ds.h"
#include "rpt.h"
#include "ut_string.h"

/// What a pattern state says of texts; -1 where it leaves a setting alone.
struct CI_TEXT_STATE {
    int pen = -1;
    int backOn = -1;           ///< background wanted
    int bits = -1;             ///< style, bit n for the OV_TEXT_BIT n
    bool swapsColours = false; ///< text and background change their colours
};

class CiContext {
public:
    static int Add(int* id);
    static int Del(int id);
    /// "mm", "m", "inch" … 3011 for an unknown name; the context then keeps its unit.
    static int SetUnit(int id, const UtCString& unitName);
    static int Update(int id);   ///< Screen and derived data up to date.
    static int Zoom2Box(int id); ///< View zoomed to the drawing's extent.
    static int SetTitle(int id, const UtCString& title);
    /// The two pens of the pattern's colour attribute "color", "pen" or "pen,fill"; -1 where it has none.
    static int GetAttrColPens(int id, const _ObObject* object, int* pen, int* fillPen);
    /// Declares a string attribute with a label and a maximal length in characters.
    static int DefParamAttrLong(int id, const UtCString& name, const UtCString& label, int length);
    /// The settings that the pattern state `obstat` stands for, -1 where it leaves one alone; 4711 when there
    /// is no such state.
    static int GetStatePenLtConf(int id, const UtCString& obstat, int* pen, int* lineType);
    static int GetStateHatchConf(int id, const UtCString& obstat, int* pen);
    static int GetStateTextConf(int id, const UtCString& obstat, CI_TEXT_STATE* text);
    static int GetState3DConf(int id, const UtCString& obstat, int* pen);
};

/// The drawing as a file.
class CiDrawing {
public:
    explicit CiDrawing(int contextId) : contextId_(contextId) {}
    int StoreWorkFile(int mode);
    int ReadWorkFile(const UtCString& name, int mode);
    UtCString GetLastWorkFileName() const;
    UtCString GetLockFileName() const;
    int UnlockDrawing();
    int CheckReadLock(const UtCString& name);
    UtCString GetLastFileName() const;
    int SetLastFileName(const UtCString& name);
    /// The drawing's georeference: a point of the drawing, its coordinates on the earth and the angle of
    /// north, in the context's unit and radians. 1005 when it has none.
    int ActGeoRef(RPT* point, double* x, double* y, double* angle);
    /// Gives the drawing a georeference. `mode` is 0, `height` the altitude, `kind` 2.
    int SetGeoRef(int mode, const RPT& point, double x, double y, double angle, double height, int kind);
    /// Remembers the objects that an import made.
    static int SetLastInterfaceIds(_ObObject* const* objects, int count);

private:
    int contextId_;
};

/// Patterns by cursor.
class CiPat {
public:
    explicit CiPat(int contextId) : contextId_(contextId) {}
    int Add(DsCsr& cursor); ///< New pattern; the cursor is aimed at it.
    /// The same without a group, attributes or a state, whatever is set for new patterns.
    int AddNormal(DsCsr& cursor);
    int First(DsCsr& cursor); ///< Non-zero for an empty drawing.
    int Next(DsCsr& cursor);  ///< Non-zero at the end.
    int GetAttr(const DsCsr& cursor, const UtCString& name, UtCString* value);
    int ChgAttr(const DsCsr& cursor, const UtCString& name, const UtCString& value);
    int GetBox(const DsCsr& cursor, RPT3* min, RPT3* max); ///< 1005 when the pattern is empty.
    int DelElems(const DsCsr& cursor); ///< Its elements; texts, hatches and other objects stay.
    /// The pattern that encloses the cursor's; 1005 when it stands by itself.
    int GetParent(const DsCsr& cursor, DsCsr& parent);
    /// Makes each hatch a pattern of its own, with the attributes of the pattern that it stood in.
    int SplitByHatchs(int mask, int a, int b);
    /// Moves all that the pattern holds by a matrix whose lengths are in the context's unit. Both flags
    /// are 1.
    int Trans(const DsCsr& cursor, const Mat44 matrix, int elements, int objects);
    int ChgWork(const DsCsr& cursor, int workId);
    int GetWork(const DsCsr& cursor, int* workId);

    /// Appends `count` elements in one call. Arrays run in parallel: type (1 Move, 2 Draw, 3 Arc),
    /// direction (arcs: 1 counter-clockwise, -1 clockwise, an arc back to its start is a full circle),
    /// first point (arcs: the centre), second point (target), pen, line type, info byte. `color` and
    /// `attribute` are unused and null.
    int AddElemsColLtAttrInfo(const DsCsr& cursor, int flags, int count, const int* type,
                              const short* direction, const RPT3* first, const RPT3* second, const int* pen,
                              const short* lineType, const void* color, const void* attribute,
                              const unsigned char* info);

private:
    int contextId_;
};

/// Elements of a pattern. A cursor that First, Next or Last aimed stays on that element. A spline is walked
/// as the Draws along its curve, all in its row; the cursor's vertex number tells them apart. Add… appends
/// with the host's current pen and line type (ovpenlt). An element of another type than asked for is 1005.
class CiElem {
public:
    explicit CiElem(int contextId) : contextId_(contextId) {}
    int First(DsCsr& cursor, int* type); ///< First element of the cursor's pattern; 1005 if none.
    int Next(DsCsr& cursor, int* type);  ///< 1005 behind the last element.
    int Last(DsCsr& cursor, int* type);
    int GetMove(const DsCsr& cursor, RPT3* target);
    int GetDraw(const DsCsr& cursor, RPT3* target);
    int GetArc(const DsCsr& cursor, short* direction, RPT3* end, RPT3* centre);
    int GetCircle(const DsCsr& cursor, RPT3* centre, double* radius);
    int AddMove(const DsCsr& cursor, const RPT3& target);
    int AddDraw(const DsCsr& cursor, const RPT3& target);
    int AddArc(const DsCsr& cursor, short direction, const RPT3& end, const RPT3& centre);
    int AddCircle(const DsCsr& cursor, const RPT3& centre, double radius);
    int ChgInfo(const DsCsr& cursor, unsigned char info);
    int GetParams(const DsCsr& cursor, int* pen, short* lineType, unsigned char* info);
    /// A named attribute of the element; 1005 when it has none.
    int GetAttr(const DsCsr& cursor, const UtCString& name, UtCString* value);

private:
    int contextId_;
};

/// Asks the user.
class CiInput {
public:
    explicit CiInput(int contextId) : contextId_(contextId) {}
    /// A file to read (mode 1) or write (mode 0). 9009 when the user refused.
    int SelectFileName(const UtCString& prompt, int mode, const UtCString& pattern,
                       const UtCString& extension, UtCString* name);

private:
    int contextId_;
};

/// The host's message area.
class CiOutput {
public:
    explicit CiOutput(int contextId) : contextId_(contextId) {}
    int String(const UtCString& text);

private:
    int contextId_;
};

/// Work planes: each an id for a triple of points (origin, a point on x, a point in the plane).
class CiWork {
public:
    explicit CiWork(int contextId) : contextId_(contextId) {}
    int Add(int* id, const RPT3& a, const RPT3& b, const RPT3& c);
    int GetMat(int id, Mat44 matrix);

private:
    int contextId_;
};
