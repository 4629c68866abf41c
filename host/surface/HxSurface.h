#pragma once
// HxSurface: the data object that holds a triangulated surface. It owns its `surface` by value.
//
// Tcl commands for scripts, besides those of every data object:
//   getNumPoints, getNumTriangles, getNumEdges, getPoint I (x y z), getTriangle I (three point
//   indices), getBoundingBox (xmin ymin zmin xmax ymax zmax),
//   show (finds or makes its display module and returns its name), hide (removes its displays).

#include "HxData.h"
#include "Surface.h"

class HxDisplaySurface;

class HxSurface : public HxData {
    MC_TYPED_HEADER(HxSurface)
    MC_TYPED_CREATABLE
  public:
    HxSurface() = default;
    // Path sets on this surface keep a copy of it when it goes, so readers are told first.
    ~HxSurface() override { detachReaders(); }

    Surface surface;
    Surface* getSurface() { return &surface; }
    Surface const* getSurface() const { return &surface; }

    // The first display module reading this surface; with `create`, one is made (labelled
    // "<label>-display", in the object pool, shown) when there is none. Else null.
    HxDisplaySurface* getDisplaySurface(bool create);

    // The pooled surface object that holds `surfaceData`, or null.
    static HxSurface* findHolder(Surface const* surfaceData);

    // Writes in the format named by the file's extension (.off, .obj, .ply, .stl).
    bool saveFile(char const* fileName, McString& error) override;
    int parse(Tcl_Interp* interp, int argc, char** argv) override;

    // The reader behind `load` for surface files: a new object, or null with the reason in
    // `error`. Defects of the data that do not stop loading are printed as one warning.
    static HxData* readFile(char const* fileName, McString& error);
    // Registers readFile for every surface extension with HxFileFormats (and the class, so
    // that `create HxSurface` finds it, and its display module). Safe to call more than once.
    static void registerFileFormats();

  private:
    int getIndexArg(Tcl_Interp* interp, char const* what, char const* text, int count, int& index) const;
};
