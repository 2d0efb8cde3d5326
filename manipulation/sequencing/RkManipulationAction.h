#pragma once
// The abstract action: anything a sequence manager or an action directory runs as one named item (a
// frame-by-frame sequence or a waypoint sequence). Constant while it runs; all run-time data is in its state.
#include <map>
#include <string>
#include <vector>

#include "foundation/RkBaseExpressionTreeElement.h"
#include "sequencing/RkManipulationStatus.h"
#include "sequencing/RkManipulationUpdateParams.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlVectorType.h"

class RkManipulationActionState;
class RkManipulationActionStateContainer;
class RkDataMap;
class RkEndEffectorSet;
class RkManipulatorEndEffectorPlacement;

class RkManipulationAction : public RkBaseExpressionTreeElement {
 public:
  // Puts a fresh state of the action's own class into the container, standing at the first element, and
  // returns whether the action can run.
  virtual RkBoolean init(RkManipulationActionStateContainer& container) const = 0;
  // Advances the action by one control step at the given absolute time, changing only the state.
  // Real-time path while no element starts or ends: allocates nothing, takes no lock, throws nothing;
  // prints only on Failure.
  virtual RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                            RkManipulationActionState& state) const = 0;
  virtual RkU32 activeControlDescription(const RkManipulationActionState& state) const = 0;
  virtual RkU32 activeControlMethod(const RkManipulationActionState& state) const = 0;
  virtual RkU32 activeEndEffectorSet(const RkManipulationActionState& state) const = 0;
  // The named values of the running element.
  virtual const RkDataMap& dataMap(const RkManipulationActionState& state) const = 0;
  // Adds every data-map name the action's elements refer to, with its value.
  virtual void findDataMapReferences(std::map<std::string, RkReal>& references) const = 0;
  virtual const RkEndEffectorSet& endEffectorSet(const RkManipulationUpdateParams& params,
                                                 const RkManipulationActionState& state) const = 0;
  // The placement the running element commands now.
  virtual const RkManipulatorEndEffectorPlacement& endEffectorPlacement(
      const RkManipulationActionState& state) const = 0;
  // A readable account of the running element, each line begun with prefix; empty when nothing runs.
  virtual std::string statusString(const RkManipulationActionState& state,
                                   const std::string& prefix) const = 0;
  // The end effectors whose positions the action profiles itself.
  virtual const RkXmlVectorType<RkXmlBasicType<RkU32>>& profiledPositionEndEffectorIndices(
      const RkManipulationActionState& state) const = 0;
};
