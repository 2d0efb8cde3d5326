#pragma once
// A task as a person reads it: a tree of headed entries (sequences in run order, frames with their tags,
// one offset per end effector with its goal in metres and degrees, the events that end frames, waypoints),
// with the nominal duration of each part. The kinds it knows are described by meaning; any other object,
// and any setting of a known one that the description leaves out, is shown through its registered fields,
// so a new kind shows sensibly without a change here.
#include <map>
#include <string>
#include <vector>

#include "foundation/RkTypes.h"
#include "xml/RkToken.h"

class RkXmlObject;
class RkXmlCompoundType;
class RkCoordinateSystemTransformation;
class RkPoseSet;
class RkManipulationSequence;
class RkManipulationFrame;
class RkManipulationOffset;
class RkManipulationFrameTransitionEvent;
class RkManipulationWaypoint;
class RkWaypointSequence;
class RkManipulationActionDirectory;

class RkTaskOutline {
 public:
  // How long a part runs: seconds, and whether it may run longer (a placement to reach, a goal that may be
  // given up on, a motion of its own pace); open with no seconds is unknown.
  struct Duration {
    RkReal seconds = 0.0;
    bool open = false;
    Duration& operator+=(const Duration& other);
    // "2 s", "at least 0.5 s", "unknown".
    std::string text() const;
  };
  // One entry: its heading, lines that belong to it, and the entries under it. The kind ("sequence",
  // "frame", "offset", "event", "waypoint", ...) lets a graph draw each kind alike.
  struct Node {
    std::string kind;
    std::string heading;
    std::vector<std::string> lines;
    std::vector<Node> children;
  };

  // poses: the pose set named poses are shown resolved from; null shows them by name only.
  explicit RkTaskOutline(const RkPoseSet* poses = nullptr);

  // The document as one tree; in a library of actions only the action at actionPath, unless it is empty.
  Node outline(const RkXmlObject& document, const std::string& name, const std::string& actionPath = "");

  // A placement as "translation 0.4 0 0.3 m, quaternion w x y z 0 1 0 0 (roll 180°, pitch 0°, yaw 0°)".
  static std::string placementText(const RkCoordinateSystemTransformation& placement);
  // A number as short as it reads exactly, rounding errors below 1e-12 shown as 0.
  static std::string number(RkReal value);

 private:
  // Where a sequence's frames stand while they are described: the frames (for offsets relative to another
  // frame), and the values the parametric frames around them publish, by tag.
  struct Scope {
    const RkManipulationSequence* sequence = nullptr;
    std::map<std::string, std::string> published;
  };

  Node sequence(const RkManipulationSequence& sequence, const std::string& heading, Duration start,
                const Scope& outer, Duration& length);
  // Into node, one entry per frame of sequence; the count of frames as text ("3 frames").
  std::string frames(const RkManipulationSequence& sequence, Duration start, const Scope& outer, Node& node,
                     Duration& length);
  // label: "frame 2", shown with the frame's tag.
  Node frame(const RkManipulationFrame& frame, const std::string& label, Duration start, const Scope& scope,
             Duration& length);
  Node offset(const RkManipulationOffset& offset, const std::string& heading, const Scope& scope);
  Node event(const RkManipulationFrameTransitionEvent& event, Duration& length);
  Node waypoints(const RkWaypointSequence& sequence, const std::string& heading);
  Node waypoint(const RkManipulationWaypoint& waypoint, RkU32 index);
  Node directory(const RkManipulationActionDirectory& directory, const std::string& prefix,
                 const std::string& actionPath);
  // An action or any other object, by meaning where its kind is known.
  Node any(const RkXmlObject& object, const std::string& heading, const Scope& scope, Duration& length);
  // Any object by its registered fields: those that differ from a fresh object of its class.
  Node generic(const RkXmlObject& object, const std::string& heading, const Scope& scope);
  // Into node, the fields of compound not named in covered that differ from a fresh object's.
  void otherFields(const RkXmlCompoundType& compound, const std::vector<const RkToken*>& covered,
                   const Scope& scope, Node& node);
  // One field's value: a line for a value written as text, an entry for anything else.
  void field(const RkXmlObject& value, const std::string& name, const Scope& scope, Node& node);

  const RkPoseSet* m_poses;
};
