#include "tools/rkmanip/RkTaskShow.h"

#include <memory>

#include "sequencing/RkManipulationActionDirectory.h"
#include "sequencing/RkPoseSet.h"
#include "tools/rkmanip/RkActionLibrary.h"
#include "tools/rkmanip/RkDocumentCheck.h"
#include "tools/rkmanip/RkTaskOutline.h"

namespace RkTaskShow {
namespace {

typedef RkTaskOutline::Node Node;

void printOutline(const Node& node, const std::string& indent, std::ostream& out) {
  out << indent << node.heading << "\n";
  for (const std::string& line : node.lines) out << indent << "  " << line << "\n";
  for (const Node& child : node.children) printOutline(child, indent + "  ", out);
}

// Text inside a quoted DOT string: quotes and backslashes escaped, each line left-aligned.
std::string dotText(const std::string& text) {
  std::string out;
  for (char c : text) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }
  return out + "\\l";
}

const char* dotStyle(const std::string& kind) {
  if (kind == "task") return "shape=box, style=\"bold,filled\", fillcolor=\"#dde8f5\"";
  if (kind == "sequence" || kind == "directory") return "shape=box, style=filled, fillcolor=\"#e9f2e3\"";
  if (kind == "frame") return "shape=box, style=bold";
  if (kind == "offset") return "shape=box, style=\"filled\", fillcolor=\"#fdf3dc\"";
  if (kind == "event") return "shape=box, style=\"dashed\"";
  if (kind == "waypoint") return "shape=box, style=\"filled\", fillcolor=\"#f3e6f5\"";
  return "shape=box";
}

// Writes node and its subtree; returns the node's name.
std::string printDot(const Node& node, int& count, std::ostream& out) {
  const std::string name = "n" + std::to_string(count++);
  std::string label = dotText(node.heading);
  for (const std::string& line : node.lines) label += dotText("  " + line);
  out << "  " << name << " [label=\"" << label << "\", " << dotStyle(node.kind) << "];\n";
  for (const Node& child : node.children) {
    const std::string childName = printDot(child, count, out);
    out << "  " << name << " -> " << childName << ";\n";
  }
  return name;
}

std::string fileName(const std::string& path) {
  const std::size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace

int show(const RkTaskShowOptions& options, std::ostream& out, std::ostream& err) {
  RkDiagnostics diagnostics;
  RkPoseSource poses;
  poses.path = options.posesPath;
  std::string problem;
  const std::unique_ptr<RkPoseSet> poseSet = RkDocumentCheck::readPoseSet(poses, diagnostics, problem);
  if (!problem.empty()) {
    diagnostics.print(err);
    err << "rkmanip show: " << options.posesPath << " " << problem << "\n";
    return 2;
  }
  // Nothing is checked against a robot: the outline shows the task as written.
  const std::unique_ptr<RkXmlObject> document = RkDocumentCheck::read(
      options.taskPath, []() { return nullptr; }, "", diagnostics, poses, options.actionPath);
  diagnostics.print(err);
  if (!document) {
    // The reader's line names the file and the line; this one stands in only when it has none.
    if (diagnostics.errors() + diagnostics.warnings() == 0)
      err << "rkmanip show: " << options.taskPath << " cannot be read\n";
    return 2;
  }
  const auto* library = dynamic_cast<const RkManipulationActionDirectory*>(document.get());
  if (!library && !options.actionPath.empty()) {
    err << "rkmanip show: " << options.taskPath << " holds a <" << document->token().localName()
        << ">, not a library of actions; --action takes a manipulationActionDirectory document\n";
    return 2;
  }
  if (library && !options.actionPath.empty() &&
      !RkActionLibrary::find(*library, options.actionPath, problem)) {
    err << "rkmanip show: " << options.taskPath << ": " << problem << "\n";
    return 2;
  }
  if (diagnostics.errors() + diagnostics.warnings() > 0)
    err << "rkmanip show: " << options.taskPath << " has " << diagnostics.summary() << "; shown as read\n";
  const Node root =
      RkTaskOutline(poseSet.get()).outline(*document, fileName(options.taskPath), options.actionPath);
  if (!options.dot) {
    printOutline(root, "", out);
    return 0;
  }
  int count = 0;
  out << "digraph task {\n  rankdir=LR;\n  node [fontname=\"Helvetica\", fontsize=10];\n";
  printDot(root, count, out);
  out << "}\n";
  return 0;
}

}  // namespace RkTaskShow
