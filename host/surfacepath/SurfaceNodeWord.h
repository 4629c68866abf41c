#pragma once
// SurfaceNodeWord: the one-word form of a node in Tcl commands:
//   v:POINT            a vertex node
//   e:EDGE:T           an edge node at parameter T
//   t:TRIANGLE:U:V     a triangle node at barycentric parameters U, V

#include "McString.h"

class SurfaceNode;
class SurfaceNodeFactory;

class SurfaceNodeWord {
  public:
    // A new node on the factory's surface, or null with the reason in `error`.
    static SurfaceNode* parse(char const* word, SurfaceNodeFactory const& factory, McString& error);
};
