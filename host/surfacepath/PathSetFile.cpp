#include "PathSetFile.h"

#include "AtomicFile.h"
#include "SurfaceEdgeNode.h"
#include "SurfacePathSet.h"
#include "SurfaceTriangleNode.h"
#include "SurfaceVertexNode.h"

#include <nlohmann/json.hpp>

#include <cfloat>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

using nlohmann::json;
namespace fs = std::filesystem;

namespace {

// Collects problems, one per line, so that a broken file is explained in one go.
class Problems {
  public:
    void add(McString const& text) {
        if (mCount++ < kShown) mText += (mText.empty() ? "" : "\n") + text;
    }
    bool empty() const { return mCount == 0; }
    McString text() const {
        if (mCount <= kShown) return mText;
        return mText + McString::format("\n... and %d more problems", mCount - kShown);
    }

  private:
    static constexpr int kShown = 20;
    McString mText;
    int mCount = 0;
};

bool isIndex(json const& value) {
    return value.is_number_integer() && value.get<int64_t>() >= 0 && value.get<int64_t>() <= INT32_MAX;
}

bool readParameter(json const& node, char const* name, int i, float& value, Problems& problems) {
    if (!node.contains(name)) {
        problems.add(McString::format("node %d: the parameter \"%s\" is missing", i, name));
        return false;
    }
    if (!node[name].is_number()) {
        problems.add(McString::format("node %d: the parameter \"%s\" must be a number", i, name));
        return false;
    }
    // A double beyond float's range has no float value; converting it would be undefined.
    const double number = node[name].get<double>();
    if (!(std::fabs(number) <= FLT_MAX)) {
        problems.add(McString::format("node %d: the parameter \"%s\" is out of range (%g)", i, name, number));
        return false;
    }
    value = float(number);
    return true;
}

void readNode(json const& node, int i, PathSetFile::NodeRecord& record, Problems& problems) {
    if (!node.is_object()) return problems.add(McString::format("node %d is not an object", i));
    if (!node.contains("kind") || !node["kind"].is_string())
        return problems.add(McString::format("node %d: \"kind\" must be \"Vertex\", \"Edge\" or \"Triangle\"", i));
    const std::string kind = node["kind"].get<std::string>();
    record.kind = SurfaceNodeFactory::kindFromName(kind.c_str());
    if (record.kind < 0)
        return problems.add(McString::format(
            "node %d: unknown kind \"%s\" (known kinds: Vertex, Edge, Triangle)", i, kind.c_str()));
    if (!node.contains("element") || !isIndex(node["element"]))
        return problems.add(McString::format("node %d: \"element\" must be a non-negative integer", i));
    record.element = node["element"].get<int>();
    if (record.kind == SurfaceNode::EDGE) readParameter(node, "t", i, record.u, problems);
    if (record.kind == SurfaceNode::TRIANGLE) {
        readParameter(node, "u", i, record.u, problems);
        readParameter(node, "v", i, record.v, problems);
    }
    if (node.contains("controlPoint")) {
        if (node["controlPoint"].is_boolean())
            record.controlPoint = node["controlPoint"].get<bool>();
        else
            problems.add(McString::format("node %d: \"controlPoint\" must be true or false", i));
    }
}

void readPath(json const& path, int p, int64_t numNodes, McDArray<int>& indices, Problems& problems) {
    if (!path.is_array()) return problems.add(McString::format("path %d is not a list of node indices", p));
    for (size_t j = 0; j < path.size(); ++j) {
        if (!isIndex(path[j])) {
            problems.add(McString::format("path %d, entry %zu: a node index must be a non-negative integer", p, j));
            continue;
        }
        const int index = path[j].get<int>();
        if (index >= numNodes)
            problems.add(McString::format("path %d, entry %zu: node %d does not exist (the file has %ld nodes)", p, j,
                                          index, long(numNodes)));
        indices.append(index);
    }
}

SurfaceNode* makeNode(PathSetFile::NodeRecord const& record, Surface* surface) {
    switch (record.kind) {
        case SurfaceNode::VERTEX: return new SurfaceVertexNode(surface, record.element);
        case SurfaceNode::EDGE: return new SurfaceEdgeNode(surface, record.element, record.u);
        default: return new SurfaceTriangleNode(surface, record.element, record.u, record.v);
    }
}

// The JSON library's messages start with an internal tag in brackets; users need the rest.
std::string withoutTag(char const* message) {
    std::string text = message;
    const size_t end = text.find("] ");
    return text[0] == '[' && end != std::string::npos ? text.substr(end + 2) : text;
}

}  // namespace

bool PathSetFile::read(char const* fileName, McString& error) {
    std::ifstream in(fileName, std::ios::binary);
    if (!in) {
        error = "cannot open the file";
        return false;
    }
    std::stringstream text;
    text << in.rdbuf();
    std::error_code ignored;  // a folder that cannot be resolved leaves references relative to here
    const fs::path folder = fs::absolute(fs::path(fileName), ignored).parent_path();
    return parse(text.str(), folder.string(), error);
}

bool PathSetFile::parse(std::string const& text, std::string const& folder, McString& error) {
    json root;
    try {
        root = json::parse(text);
    } catch (json::exception const& e) {
        error = "not a valid JSON file: " + withoutTag(e.what());
        return false;
    }
    if (!root.is_object() || !root.contains("format") || root["format"] != kFormat) {
        error.printf("not a path set file (it needs \"format\": \"%s\")", kFormat);
        return false;
    }
    if (!root.contains("version") || !root["version"].is_number_integer()) {
        error = "the file has no integer \"version\"";
        return false;
    }
    json const& version = root["version"];
    // Compared by sign first: a huge unsigned version would read as negative through int64_t.
    if (!version.is_number_unsigned() || version.get<uint64_t>() < 1 || version.get<uint64_t>() > kVersion) {
        error.printf("version %s of the format cannot be read (this program reads version 1 to %d)",
                     version.dump().c_str(), kVersion);
        return false;
    }
    Problems problems;
    if (!root.contains("surface") || !root["surface"].is_string() || root["surface"].get<std::string>().empty())
        problems.add("\"surface\" must name the surface file");
    else
        surfaceFile = (fs::path(folder) / root["surface"].get<std::string>()).lexically_normal().string();
    if (!root.contains("nodes") || !root["nodes"].is_array()) problems.add("\"nodes\" must be a list of nodes");
    if (!root.contains("paths") || !root["paths"].is_array()) problems.add("\"paths\" must be a list of paths");
    if (problems.empty()) {
        json const& nodeList = root["nodes"];
        nodes.resize(int64_t(nodeList.size()));
        for (size_t i = 0; i < nodeList.size(); ++i) readNode(nodeList[i], int(i), nodes[int64_t(i)], problems);
        json const& pathList = root["paths"];
        paths.resize(int64_t(pathList.size()));
        for (size_t p = 0; p < pathList.size(); ++p)
            readPath(pathList[p], int(p), nodes.size(), paths[int64_t(p)], problems);
    }
    if (!problems.empty()) error = problems.text();
    return problems.empty();
}

bool PathSetFile::build(Surface* surface, SurfacePathSet& set, McString& error) const {
    SurfacePathSet built(surface);
    Problems problems;
    for (int64_t i = 0; i < nodes.size(); ++i) {
        McHandle<SurfaceNode> node = makeNode(nodes[i], surface);
        node->isControlPoint = nodes[i].controlPoint ? 1 : 0;
        McString problem;
        if (!node->validate(problem)) problems.add(McString::format("node %ld: %s", long(i), problem.c_str()));
        built.nodes.append(node);
    }
    for (McDArray<int> const& indices : paths) built.addPath(indices);
    if (!problems.empty()) {
        error = problems.text();
        return false;
    }
    set.copyData(built, nullptr);
    set.setSurface(surface);
    return true;
}

// One node and one path per line: files of a million nodes stay readable and diffable.
std::string PathSetFile::toText(SurfacePathSet const& set, std::string const& surfaceReference) {
    std::string text = "{\n \"format\": " + json(kFormat).dump() + ",\n \"version\": " + std::to_string(kVersion) +
                       ",\n \"surface\": " + json(surfaceReference).dump() + ",\n \"nodes\": [";
    for (int i = 0; i < set.getNumNodes(); ++i) {
        SurfaceNode* node = set.nodes[i];
        nlohmann::ordered_json record = {{"kind", node->getTypeName()}, {"element", node->getElement()}};
        float u, v;
        node->getParameters(u, v);
        if (node->getKind() == SurfaceNode::EDGE) record["t"] = u;
        if (node->getKind() == SurfaceNode::TRIANGLE) {
            record["u"] = u;
            record["v"] = v;
        }
        record["controlPoint"] = node->isControlPoint != 0;
        text += (i ? ",\n  " : "\n  ") + record.dump();
    }
    text += "\n ],\n \"paths\": [";
    for (int p = 0; p < set.getNumPaths(); ++p) {
        McDArray<int> const& indices = set.paths[p].nodeIndices;
        text += (p ? ",\n  " : "\n  ") + json(std::vector<int>(indices.begin(), indices.end())).dump();
    }
    return text + "\n ]\n}\n";
}

bool PathSetFile::write(SurfacePathSet const& set, char const* surfaceFile, char const* fileName, McString& error) {
    McString problem;
    if (!set.isConsistent(false, nullptr, problem)) {
        error = "the path set is broken: " + problem;
        return false;
    }
    if (!fileName || !*fileName) {
        error = "no file name was given";
        return false;
    }
    if (!surfaceFile || !*surfaceFile) {
        error = "the surface has no file to refer to; save the surface first";
        return false;
    }
    std::error_code failure;
    const fs::path folder = fs::absolute(fs::path(fileName), failure).parent_path();
    const fs::path surface = fs::absolute(fs::path(surfaceFile), failure).lexically_normal();
    if (failure) {
        error = McString("cannot resolve the file's folder: ") + failure.message().c_str();
        return false;
    }
    fs::path reference = surface.lexically_relative(folder);
    if (reference.empty()) reference = surface;
    std::string text;
    try {
        text = toText(set, reference.string());
    } catch (json::exception const&) {  // JSON text holds UTF-8 only
        error = "the surface's file name is not valid UTF-8, so a path set file cannot refer to it";
        return false;
    }
    return AtomicFile::write(fileName, text, error);
}
