#include "SurfaceNodeWord.h"

#include "SurfaceEdgeNode.h"
#include "SurfaceNodeFactory.h"
#include "SurfaceTriangleNode.h"
#include "SurfaceVertexNode.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

std::vector<std::string> split(char const* word) {
    std::vector<std::string> fields(1);
    for (char const* c = word; *c; ++c) {
        if (*c == ':')
            fields.emplace_back();
        else
            fields.back() += *c;
    }
    return fields;
}

bool toInt(std::string const& text, int& value) {
    char* end = nullptr;
    errno = 0;
    const long v = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end || errno || v < INT32_MIN || v > INT32_MAX) return false;
    value = int(v);
    return true;
}

bool toFloat(std::string const& text, float& value) {
    char* end = nullptr;
    value = std::strtof(text.c_str(), &end);
    return !text.empty() && !*end && std::isfinite(value);
}

}  // namespace

SurfaceNode* SurfaceNodeWord::parse(char const* word, SurfaceNodeFactory const& factory, McString& error) {
    const std::vector<std::string> f = split(word);
    int element = 0;
    float u = 0, v = 0;
    SurfaceNode* node = nullptr;
    if (f[0] == "v" && f.size() == 2 && toInt(f[1], element))
        node = new SurfaceVertexNode(factory.getSurface(), element);
    else if (f[0] == "e" && f.size() == 3 && toInt(f[1], element) && toFloat(f[2], u))
        node = new SurfaceEdgeNode(factory.getSurface(), element, u);
    else if (f[0] == "t" && f.size() == 4 && toInt(f[1], element) && toFloat(f[2], u) && toFloat(f[3], v))
        node = new SurfaceTriangleNode(factory.getSurface(), element, u, v);
    if (!node) {
        error.printf("bad node word \"%s\" (expected v:POINT, e:EDGE:T or t:TRIANGLE:U:V)", word);
        return nullptr;
    }
    McString problem;
    if (!node->validate(problem)) {
        error.printf("bad node word \"%s\": %s", word, problem.c_str());
        delete node;
        return nullptr;
    }
    return node;
}
