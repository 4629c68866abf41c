#pragma once
// SoControlPointSeparator: the separator around one control point's marker in a path set's
// display. It remembers the node index of the control point it shows, so that a pick on the
// marker (whose path runs through this separator) names the node.

#include <Inventor/fields/SoSFInt32.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSubNode.h>

class SoControlPointSeparator : public SoSeparator {
    SO_NODE_HEADER(SoControlPointSeparator);

  public:
    // Registers the class with Coin (once; later calls do nothing). Needs SoDB::init().
    static void initClass();
    SoControlPointSeparator();

    // The node index in the path set; -1 until set.
    SoSFInt32 nodeIndex;
    int getNodeIndex() const { return nodeIndex.getValue(); }
    void setNodeIndex(int index) { nodeIndex.setValue(index); }

  protected:
    ~SoControlPointSeparator() override;
};
