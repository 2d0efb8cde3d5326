#pragma once
// Ends its frame a fixed time after the frame started:
//   <timeDurationTransitionEvent><timeDuration>2.5</timeDuration></timeDurationTransitionEvent>
#include "events/RkManipulationFrameTransitionEvent.h"
#include "xml/RkXmlConcreteClass.h"

class RkManipulationTimeDurationTransitionEvent
    : public RkXmlConcreteClass<RkManipulationTimeDurationTransitionEvent,
                                RkManipulationFrameTransitionEvent> {
 public:
  bool operator==(const RkManipulationTimeDurationTransitionEvent& other) const {
    return RkManipulationFrameTransitionEvent::operator==(other) && m_timeDuration == other.m_timeDuration;
  }
  bool operator!=(const RkManipulationTimeDurationTransitionEvent& other) const { return !(*this == other); }
  static const RkToken& classToken();

  RkManipulationFrameTransitionEventStateContainer calculateEndState(
      const RkManipulationUpdateParams& params, const RkManipulationFrame& frame) const override;
  // Turns the duration into an absolute trigger time; a duration that is not positive is refused.
  RkBoolean init(RkReal time, const RkManipulationUpdateParams& params, const RkManipulationFrame& frame,
                 RkManipulationFrameTransitionEventStateContainer& stateContainer) const override;
  // Complete from the cycle whose time reaches the trigger time on. Real-time safe.
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    const RkManipulationFrame& frame,
                                    const RkManipulationFrameState& frameState,
                                    RkManipulationFrameTransitionEventState& state) const override;

  virtual RkReal timeDuration() const { return m_timeDuration; }
  virtual void setTimeDuration(RkReal duration) { m_timeDuration = duration; }

 protected:
  void registerComponents() override;

 private:
  RkXmlBasicType<RkReal> m_timeDuration;
};
