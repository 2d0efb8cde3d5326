#include "tools/rkmanip/RkTaskOutline.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>

#include "common/RkCoordinateSystemTransformation.h"
#include "control/RkControlTokens.h"
#include "control/RkEndEffectorPlacement.h"
#include "events/RkManipulationPlacementAchievedTransitionEvent.h"
#include "events/RkManipulationTimeDurationTransitionEvent.h"
#include "foundation/RkPrint.h"
#include "frames/RkParametricManipulationFrame.h"
#include "frames/RkStandardManipulationFrame.h"
#include "frames/RkStandardManipulationFrameState.h"
#include "frames/RkSubsequenceManipulationFrame.h"
#include "offsets/RkActualPlacementManipulationOffset.h"
#include "offsets/RkConstantManipulationOffset.h"
#include "offsets/RkFrameRelativeManipulationOffset.h"
#include "offsets/RkInterpolatedManipulationOffset.h"
#include "offsets/RkLinkRelativeManipulationOffset.h"
#include "offsets/RkObjectRelativeManipulationOffset.h"
#include "offsets/RkParametricTranslationManipulationOffset.h"
#include "offsets/RkReferencePoseManipulationOffset.h"
#include "sequencing/RkManipulationActionContainer.h"
#include "sequencing/RkManipulationActionDirectory.h"
#include "sequencing/RkManipulationSequenceManager.h"
#include "sequencing/RkManipulationTokens.h"
#include "sequencing/RkPoseSet.h"
#include "tools/rkmanip/RkActionLibrary.h"
#include "waypoints/RkWaypointSequence.h"
#include "xml/RkXmlObjectVisitor.h"
#include "xml/RkXmlTextType.h"
#include "xml/RkXmlTokens.h"

namespace {

typedef RkTaskOutline::Node Node;
typedef RkTaskOutline::Duration Duration;

std::string quoted(const std::string& text) {
  return "\"" + text + "\"";
}

std::string fixed(RkReal value, int decimals) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  std::string out = text;
  if (out.find('.') != std::string::npos) {
    out.erase(out.find_last_not_of('0') + 1);
    if (out.back() == '.') out.pop_back();
  }
  return out == "-0" ? "0" : out;
}

std::string secondsText(RkReal value) {
  return RkTaskOutline::number(value) + " s";
}

// Roll, pitch and yaw in degrees: rotations about the fixed x, then y, then z axis.
std::string rollPitchYaw(const RkOrientation& orientation) {
  const Eigen::Matrix3d r = orientation.matrix();
  const RkReal sinPitch = std::clamp(-r(2, 0), -1.0, 1.0);
  RkReal roll = 0.0, yaw = 0.0;
  if (std::abs(sinPitch) > 1.0 - 1e-12) {
    yaw = std::atan2(-r(0, 1), r(1, 1));  // roll and yaw turn about one axis here: all of it is yaw
  } else {
    roll = std::atan2(r(2, 1), r(2, 2));
    yaw = std::atan2(r(1, 0), r(0, 0));
  }
  const auto degrees = [](RkReal radians) {
    const std::string text = fixed(radians * 180.0 / M_PI, 2);
    return (text == "-180" ? "180" : text) + "°";
  };
  return "roll " + degrees(roll) + ", pitch " + degrees(std::asin(sinPitch)) + ", yaw " + degrees(yaw);
}

// "(2 s, 1 s to 3 s)": how long a part beginning at start runs, and when, while its start is known.
std::string timing(const Duration& start, const Duration& length) {
  std::string text = " (" + length.text();
  if (!start.open && length.open) text += ", starts at " + secondsText(start.seconds);
  if (!start.open && !length.open)
    text += ", " + secondsText(start.seconds) + " to " + secondsText(start.seconds + length.seconds);
  return text + ")";
}

std::string totalText(const Duration& length) {
  return "nominal duration: " + (length.open && length.seconds <= 0.0 ? "unknown" : length.text());
}

Duration operator+(Duration a, const Duration& b) {
  return a += b;
}

void discard(int, const char*, const char*, void*) {}

// The objects one object holds directly, each with the tag it stands under: a compound's fields, a
// vector's elements, a map's keys and values in turn, a single-element holder's element.
class ChildLister : public RkXmlObjectVisitor {
 public:
  struct Child {
    RkToken tag;
    const RkXmlObject* object;
  };
  static std::vector<Child> of(const RkXmlObject& object) {
    ChildLister lister(object);
    // An empty single-element holder tells the print facility so; here it is only empty.
    const Rk::Print::ThreadSink quiet(&discard, nullptr);
    lister.start(object);
    return lister.m_children;
  }

 protected:
  bool mayEnter() const override { return take(currentObject()); }
  bool shouldDescend(const RkXmlObject* object) override { return take(object); }

 private:
  explicit ChildLister(const RkXmlObject& root) : m_root(&root) {}
  // Enters the root only; anything else is a child, listed and not entered.
  bool take(const RkXmlObject* object) const {
    if (object == m_root) return true;
    m_children.push_back({currentToken(), object});
    return false;
  }
  const RkXmlObject* m_root;
  mutable std::vector<Child> m_children;
};

std::string text(const RkXmlTextType& value) {
  std::string out;
  value.formatText(out);
  return out;
}

bool covers(const std::vector<const RkToken*>& covered, const RkToken& tag) {
  return std::any_of(covered.begin(), covered.end(), [&](const RkToken* token) { return *token == tag; });
}

std::string frameLabel(const RkManipulationFrame& frame, const std::string& label) {
  const std::string& tag = frame.tag().value();
  return tag.empty() ? label : label + " " + quoted(tag);
}

const RkStandardManipulationFrameState& anyState() {
  static const RkStandardManipulationFrameState state;
  return state;
}

const char* const kLegend =
    "placements: translation x y z in metres, orientation as quaternion w x y z and as roll, pitch, yaw in "
    "degrees (about fixed x, y, z)";

}  // namespace

RkTaskOutline::Duration& RkTaskOutline::Duration::operator+=(const Duration& other) {
  seconds += other.seconds;
  open = open || other.open;
  return *this;
}

std::string RkTaskOutline::Duration::text() const {
  if (!open) return secondsText(seconds);
  return seconds > 0.0 ? "at least " + secondsText(seconds) : "unknown duration";
}

std::string RkTaskOutline::number(RkReal value) {
  if (std::abs(value) < 1e-12) return "0";
  char text[64];
  std::snprintf(text, sizeof text, "%.6g", value);
  return text;
}

std::string RkTaskOutline::placementText(const RkCoordinateSystemTransformation& placement) {
  const RkVector& t = placement.translation();
  const RkOrientation& q = placement.orientation();
  std::string out = "translation " + number(t.x()) + " " + number(t.y()) + " " + number(t.z()) +
                    " m, quaternion " + number(q.w()) + " " + number(q.x()) + " " + number(q.y()) + " " +
                    number(q.z());
  return out + (q.angle() < 1e-12 ? " (no rotation)" : " (" + rollPitchYaw(q) + ")");
}

RkTaskOutline::RkTaskOutline(const RkPoseSet* poses) : m_poses(poses) {}

RkTaskOutline::Node RkTaskOutline::outline(const RkXmlObject& document, const std::string& name,
                                           const std::string& actionPath) {
  Duration length;
  Node root;
  if (const auto* manager = dynamic_cast<const RkManipulationSequenceManager*>(&document)) {
    root.kind = "task";
    std::string order;
    const auto& names = manager->sequenceOrder();
    for (RkU32 i = 0; i < names.size(); ++i) {
      const std::string& sequenceName = names[i].value();
      order += (i == 0 ? " " : i + 1 == names.size() ? ", then " : ", ") + quoted(sequenceName);
      const RkManipulationSequence* found = manager->sequenceMap().find(sequenceName);
      const std::string heading = "sequence " + quoted(sequenceName);
      if (!found) {
        root.children.push_back(
            {"sequence", heading + ": not in the sequence map, so the run fails here", {}, {}});
        length.open = true;
        continue;
      }
      Duration part;
      root.children.push_back(sequence(*found, heading, length, Scope(), part));
      length += part;
    }
    for (const auto& entry : manager->sequenceMap().mapContainer()) {
      bool ordered = false;
      for (RkU32 i = 0; i < names.size(); ++i) ordered = ordered || names[i].value() == entry.first.value();
      if (!ordered)
        root.children.push_back(
            {"sequence",
             "sequence " + quoted(entry.first.value()) + ": never run, the order does not name it",
             {},
             {}});
    }
    root.heading = name + ": sequence manager, runs" + (order.empty() ? " nothing" : order);
    root.lines.push_back(totalText(length));
  } else if (const auto* library = dynamic_cast<const RkManipulationActionDirectory*>(&document)) {
    std::string problem;
    const RkManipulationAction* action =
        actionPath.empty() ? nullptr : RkActionLibrary::find(*library, actionPath, problem);
    if (action) {
      root = any(*action, name + ": action " + quoted(actionPath), Scope(), length);
      root.lines.insert(root.lines.begin(), totalText(length));
    } else {
      root = directory(*library, "", actionPath);
      root.kind = "task";
      root.heading = name + ": library of actions" + (problem.empty() ? "" : "; " + problem);
    }
  } else {
    root = any(document, name, Scope(), length);
    if (dynamic_cast<const RkManipulationAction*>(&document))
      root.lines.insert(root.lines.begin(), totalText(length));
  }
  root.lines.insert(root.lines.begin(), kLegend);
  return root;
}

RkTaskOutline::Node RkTaskOutline::sequence(const RkManipulationSequence& sequence,
                                            const std::string& heading, Duration start, const Scope& outer,
                                            Duration& length) {
  Node node{"sequence", "", {}, {}};
  const std::string count = frames(sequence, start, outer, node, length);
  node.heading = heading + timing(start, length) + ": " + count;
  otherFields(sequence, {&RkManipulation::RkManipulationFrameContainerVectorToken}, outer, node);
  return node;
}

std::string RkTaskOutline::frames(const RkManipulationSequence& sequence, Duration start, const Scope& outer,
                                  Node& node, Duration& length) {
  Scope scope = outer;
  scope.sequence = &sequence;
  length = Duration();
  const auto& frames = sequence.manipulationFrameContainerVector();
  for (RkU32 i = 0; i < frames.size(); ++i) {
    const std::string label = "frame " + std::to_string(i + 1);
    const RkManipulationFrame* element = frames[i].element();
    if (!element) {
      node.children.push_back({"frame", label + ": empty, so the run fails here", {}, {}});
      length.open = true;
      continue;
    }
    Duration part;
    node.children.push_back(frame(*element, label, start + length, scope, part));
    length += part;
  }
  return frames.size() == 1 ? "1 frame" : std::to_string(frames.size()) + " frames";
}

RkTaskOutline::Node RkTaskOutline::frame(const RkManipulationFrame& frame, const std::string& label,
                                         Duration start, const Scope& scope, Duration& length) {
  Node node{"frame", "", {}, {}};
  std::string what;
  std::vector<const RkToken*> covered{&RkManipulation::RkTagToken,
                                      &RkManipulation::RkManipulationFrameTransitionEventContainerToken};
  const RkManipulationFrameTransitionEventContainer* ownEvent = nullptr;
  length = Duration();
  if (const auto* standard = dynamic_cast<const RkStandardManipulationFrame*>(&frame)) {
    const auto& offsets = standard->offsetContainerVector(anyState());
    for (RkU32 i = 0; i < offsets.size(); ++i) {
      const std::string heading = "end effector " + std::to_string(i);
      if (offsets[i].element()) {
        node.children.push_back(offset(*offsets[i].element(), heading, scope));
      } else {
        node.children.push_back({"offset", heading + ": no offset, so the frame cannot start", {}, {}});
      }
    }
    if (offsets.size() == 0) node.lines.push_back("no offsets: no end effector is given a goal");
    const RkManipulationFrameTransitionEvent* ending =
        standard->transitionEventContainer(anyState()).element();
    if (ending) {
      node.children.push_back(event(*ending, length));
    } else {
      node.children.push_back({"event", "no transition event, so the frame never ends", {}, {}});
      length.open = true;
    }
    covered.push_back(&RkManipulation::RkManipulationOffsetContainerVectorToken);
  } else if (const auto* parametric = dynamic_cast<const RkParametricManipulationFrame*>(&frame)) {
    const auto& values = parametric->parametricValues();
    std::string list;
    for (RkU32 i = 0; i < values.size(); ++i) list += (i == 0 ? "" : ", ") + number(values[i].value());
    const std::string count = values.size() == 1 ? "1 value" : std::to_string(values.size()) + " values";
    what = ": runs its target frame once for each of " + count + " of " + quoted(parametric->parametricTag());
    if (!list.empty()) node.lines.push_back(quoted(parametric->parametricTag()) + " takes " + list);
    Scope inner = scope;
    inner.published[parametric->parametricTag()] = list.empty() ? "no value" : list;
    const RkManipulationFrame* target = parametric->targetFrame().element();
    Duration once;
    if (target) {
      node.children.push_back(this->frame(*target, "target frame", Duration{0.0, true}, inner, once));
    } else {
      node.children.push_back({"frame", "target frame: none, so the frame cannot start", {}, {}});
      once.open = true;
    }
    length = {once.seconds * values.size(), once.open};
    ownEvent = &parametric->transitionEventContainer(anyState());
    covered.insert(covered.end(), {&RkManipulation::RkTargetFrameToken, &RkManipulation::RkParametricTagToken,
                                   &RkManipulation::RkParametricValuesToken});
  } else if (const auto* subsequence = dynamic_cast<const RkSubsequenceManipulationFrame*>(&frame)) {
    what = ": runs a sequence of " + frames(subsequence->subsequence(), start, scope, node, length);
    ownEvent = &subsequence->transitionEventContainer(anyState());
    covered.push_back(&RkManipulation::RkManipulationSequenceToken);
  } else {
    Node shown = generic(frame, "", scope);
    what = " (unknown duration): " + shown.heading;
    node.lines = shown.lines;
    node.children = shown.children;
    length.open = true;
    covered.clear();
  }
  if (ownEvent && ownEvent->element()) {
    Duration held;
    node.children.push_back(event(*ownEvent->element(), held));
    node.children.back().heading = "and is held by its own event, which " + node.children.back().heading;
    length = {std::max(length.seconds, held.seconds), length.open || held.open};
  }
  node.heading = frameLabel(frame, label) + (covered.empty() ? "" : timing(start, length)) + what;
  if (!covered.empty()) otherFields(frame, covered, scope, node);
  return node;
}

RkTaskOutline::Node RkTaskOutline::offset(const RkManipulationOffset& offset, const std::string& heading,
                                          const Scope& scope) {
  Node node{"offset", heading + ": ", {}, {}};
  std::vector<const RkToken*> covered;
  if (const auto* constant = dynamic_cast<const RkConstantManipulationOffset*>(&offset)) {
    node.heading += "goes to a fixed placement in the system frame";
    node.lines.push_back(placementText(constant->offset().placement()));
    covered.push_back(&RkManipulation::RkManipulationOffsetToken);
  } else if (const auto* interpolated = dynamic_cast<const RkInterpolatedManipulationOffset*>(&offset)) {
    // Shown as its target, which it blends into.
    const RkManipulationOffset* target = interpolated->targetOffset().element();
    if (target) node = this->offset(*target, heading, scope);
    if (!target) node.heading += "no target, so the frame cannot start";
    node.lines.push_back("interpolated from where it stands over " +
                         secondsText(interpolated->interpolationTime()));
    covered = {&RkManipulation::RkTargetOffsetToken, &RkManipulation::RkInterpolationTimeToken};
  } else if (const auto* relative = dynamic_cast<const RkRelativeManipulationOffset*>(&offset)) {
    std::string primary = "the manipulator's own frame, as it stands each cycle";
    if (const auto* fromFrame = dynamic_cast<const RkFrameRelativeManipulationOffset*>(&offset)) {
      const RkU32 index = fromFrame->frameIndex();
      const auto* frames = scope.sequence ? &scope.sequence->manipulationFrameContainerVector() : nullptr;
      const RkManipulationFrame* other =
          frames && index < frames->size() ? (*frames)[index].element() : nullptr;
      primary = other ? "the goal " + frameLabel(*other, "frame " + std::to_string(index + 1)) +
                            " gave it, taken when this frame starts"
                      : "the goal of frame " + std::to_string(index + 1) +
                            ", which the sequence does not have, so the frame cannot start";
      covered.push_back(&RkManipulation::RkFrameIndexToken);
    } else if (const auto* link = dynamic_cast<const RkLinkRelativeManipulationOffset*>(&offset)) {
      std::string type;
      for (const RkXmlCompoundType::Component& component : link->components())
        if (component.tag == RkManipulation::RkLinkFrameTypeToken)
          type = text(static_cast<const RkXmlTextType&>(component.in(*link)));
      if (type == "primaryFrame") type = "primary frame";
      if (type == "dhFrame") type = "DH frame";
      primary =
          "the " + type + " of the link " + quoted(link->linkIdentifier()) + ", as it stands each cycle";
      covered.insert(covered.end(),
                     {&RkManipulation::RkLinkFrameTypeToken, &RkManipulation::RkLinkIdentifiersToken});
    } else if (!dynamic_cast<const RkObjectRelativeManipulationOffset*>(&offset)) {
      primary = "its primary frame";
    }
    node.heading += "relative to " + primary;
    node.lines.push_back("offset " + placementText(relative->relativeOffset()));
    if (relative->systemFrameAsManipulationFrame()) {
      node.lines.push_back("offset along the system frame's axes");
    } else if (!relative->objectFrameAsManipulationFrame()) {
      const RkXmlVector* vectors[3] = {&relative->manipulationFrameXAxisVector(),
                                       &relative->manipulationFrameYAxisVector(),
                                       &relative->manipulationFrameZAxisVector()};
      const RkU32 sources[3] = {relative->manipulationFrameXAxisSourceFrame(),
                                relative->manipulationFrameYAxisSourceFrame(),
                                relative->manipulationFrameZAxisSourceFrame()};
      const char* names[3] = {"system frame", "primary frame", "undefined"};
      for (int axis = 0; axis < 3; ++axis) {
        const RkU32 source = sources[axis];
        node.lines.push_back(std::string(1, char('x' + axis)) + " axis: " +
                             (source == RkRelativeManipulationOffset::UndefinedFrame
                                  ? std::string("undefined (made from the others)")
                                  : text(*vectors[axis]) + " in the " +
                                        names[source == RkRelativeManipulationOffset::SystemFrame ? 0 : 1]));
      }
    }
    covered.insert(covered.end(),
                   {&RkManipulation::RkRelativeOffsetToken, &RkManipulation::RkManipulationFrameXAxisVector,
                    &RkManipulation::RkManipulationFrameXAxisSourceFrame,
                    &RkManipulation::RkManipulationFrameYAxisVector,
                    &RkManipulation::RkManipulationFrameYAxisSourceFrame,
                    &RkManipulation::RkManipulationFrameZAxisVector,
                    &RkManipulation::RkManipulationFrameZAxisSourceFrame});
  } else if (const auto* moved = dynamic_cast<const RkParametricTranslationManipulationOffset*>(&offset)) {
    node.heading += "the target's goal, moved along its own axes by data-map values";
    const std::string* tags[3] = {&moved->parametricXTag(), &moved->parametricYTag(),
                                  &moved->parametricZTag()};
    for (int axis = 0; axis < 3; ++axis) {
      if (tags[axis]->empty()) continue;
      const auto values = scope.published.find(*tags[axis]);
      node.lines.push_back(std::string(1, char('x' + axis)) + " by " + quoted(*tags[axis]) +
                           (values == scope.published.end() ? ", which no frame around this one publishes"
                                                            : ": " + values->second) +
                           " m");
    }
    const RkManipulationOffset* target = moved->targetOffset().element();
    node.children.push_back(target ? this->offset(*target, "target", scope)
                                   : Node{"offset", "target: none, so the frame cannot start", {}, {}});
    covered = {&RkManipulation::RkTargetOffsetToken, &RkManipulation::RkParametricXTagToken,
               &RkManipulation::RkParametricYTagToken, &RkManipulation::RkParametricZTagToken};
  } else if (const auto* pose = dynamic_cast<const RkReferencePoseManipulationOffset*>(&offset)) {
    node.heading += "goes to the pose " + quoted(pose->poseName());
    if (m_poses) {
      const RkCoordinateSystemTransformation* found = m_poses->poseMap().find(pose->poseName());
      node.lines.push_back(found ? placementText(*found) : "which the pose set does not hold");
    }
    covered.push_back(&RkManipulation::RkNameToken);
  } else if (dynamic_cast<const RkActualPlacementManipulationOffset*>(&offset)) {
    node.heading += "holds the placement it actually has";
  } else {
    Node shown = generic(offset, heading, scope);
    shown.kind = "offset";
    return shown;
  }
  otherFields(offset, covered, scope, node);
  return node;
}

RkTaskOutline::Node RkTaskOutline::event(const RkManipulationFrameTransitionEvent& event, Duration& length) {
  Node node{"event", "", {}, {}};
  std::vector<const RkToken*> covered;
  length = Duration{0.0, true};
  if (const auto* timed = dynamic_cast<const RkManipulationTimeDurationTransitionEvent*>(&event)) {
    node.heading = "ends after " + secondsText(timed->timeDuration());
    length = {timed->timeDuration(), false};
    covered.push_back(&RkManipulation::RkTimeDurationToken);
  } else if (const auto* placed =
                 dynamic_cast<const RkManipulationPlacementAchievedTransitionEvent*>(&event)) {
    const auto& indices = placed->testIndices();
    std::string which;
    for (RkU32 i = 0; i < indices.size(); ++i)
      which += (i == 0 ? "" : i + 1 == indices.size() ? " and " : ", ") + std::to_string(indices[i].value());
    node.heading = "ends when " +
                   (indices.size() == 0   ? std::string("every end effector is")
                    : indices.size() == 1 ? "end effector " + which + " is"
                                          : "end effectors " + which + " are each") +
                   " within " + number(placed->tolerance()) + " m of " +
                   (indices.size() > 1 ? "their goals" : "its goal");
    node.lines.push_back(
        placed->softFailure()
            ? "ends the frame all the same if the arm stops converging short of it (soft failure)"
            : "fails the task if the arm stops converging short of it");
    covered = {&RkManipulation::RkPlacementTestIndicesToken, &RkManipulation::RkPlacementToleranceToken,
               &RkManipulation::RkSoftFailureToken};
  } else {
    Node shown = generic(event, "ends by", Scope());
    shown.kind = "event";
    return shown;
  }
  otherFields(event, covered, Scope(), node);
  return node;
}

RkTaskOutline::Node RkTaskOutline::waypoints(const RkWaypointSequence& sequence, const std::string& heading) {
  const RkU32 set = sequence.endEffectorSetIndex();
  const RkU32 count = sequence.waypoints().size();
  Node node{
      "sequence",
      heading + " (unknown duration): waypoint sequence, moves end effector " +
          std::to_string(sequence.endEffectorIndex()) + " of " +
          (set == RkWaypointSequence::kControllerActiveSet ? std::string("the controller's active set")
                                                           : "end-effector set " + std::to_string(set)) +
          " through " + std::to_string(count) + (count == 1 ? " waypoint" : " waypoints") +
          " at its own pace",
      {},
      {}};
  for (RkU32 i = 0; i < count; ++i) node.children.push_back(waypoint(sequence.waypoints()[i], i));
  otherFields(sequence,
              {&RkManipulation::RkManipulationWaypointVectorToken, &RkControl::RkActiveEndEffectorSetToken,
               &RkManipulation::RkEndEffectorIndexToken},
              Scope(), node);
  return node;
}

RkTaskOutline::Node RkTaskOutline::waypoint(const RkManipulationWaypoint& waypoint, RkU32 index) {
  const std::string& name = waypoint.label().value();
  Node node{"waypoint",
            "waypoint " + std::to_string(index + 1) + (name.empty() ? "" : " " + quoted(name)) + ": " +
                (waypoint.stopPoint() ? std::string("stops here")
                                      : "rounds the corner within " + number(waypoint.zoneRadius()) + " m"),
            {},
            {}};
  const auto& goals = waypoint.goal().offsetTransformations();
  for (RkU32 i = 0; i < goals.size(); ++i)
    node.lines.push_back((goals.size() == 1 ? "" : "end effector " + std::to_string(i) + ": ") +
                         placementText(goals[i]));
  if (goals.size() == 0) node.lines.push_back("no placement");
  const RkCoordinateSystemTransformation* pose = m_poses ? m_poses->poseMap().find(name) : nullptr;
  if (pose) node.lines.push_back("replaced by the pose " + quoted(name) + ": " + placementText(*pose));
  otherFields(waypoint,
              {&RkManipulation::RkStopPointToken, &RkManipulation::RkDesiredPlacementToken,
               &RkManipulation::RkNameToken, &RkManipulation::RkZoneRadiusToken},
              Scope(), node);
  return node;
}

RkTaskOutline::Node RkTaskOutline::directory(const RkManipulationActionDirectory& directory,
                                             const std::string& prefix, const std::string& actionPath) {
  Node node{"directory", "directory " + quoted(prefix), {}, {}};
  for (const auto& entry : directory.subdirectoryMap().mapContainer())
    node.children.push_back(this->directory(entry.second, prefix + entry.first.value(), actionPath));
  for (const auto& entry : directory.actionMap().mapContainer()) {
    const std::string heading = "action " + quoted(prefix + entry.first.value());
    Duration length;
    node.children.push_back(entry.second.element() ? any(*entry.second.element(), heading, Scope(), length)
                                                   : Node{"action", heading + ": empty", {}, {}});
  }
  return node;
}

RkTaskOutline::Node RkTaskOutline::any(const RkXmlObject& object, const std::string& heading,
                                       const Scope& scope, Duration& length) {
  length = Duration{0.0, true};
  if (const auto* sequence = dynamic_cast<const RkManipulationSequence*>(&object))
    return this->sequence(*sequence, heading, Duration(), scope, length);
  if (const auto* waypoints = dynamic_cast<const RkWaypointSequence*>(&object))
    return this->waypoints(*waypoints, heading);
  if (const auto* frame = dynamic_cast<const RkManipulationFrame*>(&object)) {
    return this->frame(*frame, heading, Duration(), scope, length);
  }
  if (const auto* offset = dynamic_cast<const RkManipulationOffset*>(&object))
    return this->offset(*offset, heading, scope);
  if (const auto* event = dynamic_cast<const RkManipulationFrameTransitionEvent*>(&object)) {
    Node node = this->event(*event, length);
    node.heading = heading + ": " + node.heading;
    return node;
  }
  if (const auto* container = dynamic_cast<const RkManipulationActionContainer*>(&object)) {
    if (container->element()) return any(*container->element(), heading, scope, length);
  }
  return generic(object, heading, scope);
}

RkTaskOutline::Node RkTaskOutline::generic(const RkXmlObject& object, const std::string& heading,
                                           const Scope& scope) {
  Node node{"value", heading, {}, {}};
  if (const auto* compound = dynamic_cast<const RkXmlCompoundType*>(&object)) {
    node.heading += (heading.empty() ? "" : ": ") + std::string(object.token().localName());
    otherFields(*compound, {}, scope, node);
    return node;
  }
  // A value written as text, or a container: its content under the heading.
  field(object, "", scope, node);
  if (node.lines.size() == 1 && node.children.empty()) {
    node.heading += node.lines.front();
    node.lines.clear();
  }
  return node;
}

void RkTaskOutline::otherFields(const RkXmlCompoundType& compound, const std::vector<const RkToken*>& covered,
                                const Scope& scope, Node& node) {
  const std::unique_ptr<RkXmlObject> fresh(compound.newObject());
  const auto* defaults = dynamic_cast<const RkXmlCompoundType*>(fresh.get());
  for (const RkXmlCompoundType::Component& component : compound.components()) {
    if (covers(covered, component.tag)) continue;
    if (defaults && component.equal(component.in(compound), component.in(*defaults))) continue;
    field(component.in(compound), std::string(component.tag.localName()), scope, node);
  }
}

void RkTaskOutline::field(const RkXmlObject& value, const std::string& name, const Scope& scope, Node& node) {
  const std::string label = name.empty() ? name : name + ": ";
  if (const auto* placement = dynamic_cast<const RkCoordinateSystemTransformation*>(&value)) {
    node.lines.push_back(label + placementText(*placement));
  } else if (const auto* textual = dynamic_cast<const RkXmlTextType*>(&value)) {
    node.lines.push_back(label + text(*textual));
  } else if (dynamic_cast<const RkXmlCompoundType*>(&value)) {
    Duration length;
    node.children.push_back(any(value, name, scope, length));
  } else {
    const std::vector<ChildLister::Child> children = ChildLister::of(value);
    std::string items;
    bool allText = true;
    for (const auto& child : children) {
      const auto* item = dynamic_cast<const RkXmlTextType*>(child.object);
      allText = allText && item && child.tag == RkXml::RkElementToken;
      if (allText) items += (items.empty() ? "" : " ") + text(*item);
    }
    if (allText) {
      node.lines.push_back(label + (children.empty() ? "none" : items));
      return;
    }
    for (std::size_t i = 0; i < children.size(); ++i) {
      const ChildLister::Child& child = children[i];
      if (child.tag == RkXml::RkKeyToken && i + 1 < children.size()) {
        const auto* key = dynamic_cast<const RkXmlTextType*>(child.object);
        field(*children[i + 1].object, name + " " + quoted(key ? text(*key) : "?"), scope, node);
        ++i;
      } else if (child.tag == RkXml::RkElementToken) {
        field(*child.object, name + " " + std::to_string(i + 1), scope, node);
      } else {
        field(*child.object, name, scope, node);
      }
    }
  }
}
