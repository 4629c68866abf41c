#pragma once
// TestPathEditor: a path editor made by name through the factory, for the module and factory
// tests. It makes one port of its own on the module (left marked new, as an editor may leave a
// button pressed), counts what the module asks of it,
// answers the commands "handled" (0), "odd" (2) and nothing else, and refuses path sets while
// `refuse` is set.

#include "HxPortToggleList.h"
#include "HxSurfacePathEditor.h"
#include "SurfacePathEditorGUIBase.h"

#include <cstring>

class TestPathEditor : public SurfacePathEditorGUIBase {
    MC_TYPED_HEADER(TestPathEditor)
    MC_TYPED_CREATABLE
  public:
    ~TestPathEditor() override { ++destroyed; }

    bool canEditPathSet(HxSurfacePathSet*) override { return !refuse; }
    int keyCB(SoEvent const*) override { return 0; }
    void mousePickCB(SoEventCallback*) override {}
    void initButtons(HxSurfacePathEditor* module) override { (new HxPortToggleList(module, "testToggle", 1))->touch(); }
    void checkButtons() override { ++checks; }
    void update() override { ++updates; }
    int parse(Tcl_Interp*, int argc, char** argv) override {
        if (argc == 2 && !strcmp(argv[1], "handled")) return 0;
        if (argc == 2 && !strcmp(argv[1], "odd")) return 2;
        return 1;
    }
    void init() override { ++inits; }

    int checks = 0, updates = 0, inits = 0;
    static inline int destroyed = 0;
    static inline bool refuse = false;
};

inline McTypedObject* TestPathEditor::createInstance() { return new TestPathEditor; }

inline McTypeInfo const* TestPathEditor::getClassTypeId() {
    static McTypeInfo const type("TestPathEditor", &TestPathEditor::createInstance,
                                 SurfacePathEditorGUIBase::getClassTypeId());
    return &type;
}
