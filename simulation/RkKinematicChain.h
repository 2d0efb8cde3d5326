#pragma once
// The serial kinematic chain of one arm, from its base link to its tip link: forward kinematics and
// Jacobians of any link on the chain, joint limits and names. Loaded from a URDF file or a standard
// Denavit-Hartenberg table. Placements are given in the chain's base frame, lengths in metres, angles in
// radians.
//
// The query functions write into caller-provided storage and do not allocate. They use scratch storage
// held by the chain, so one chain must not be queried from two threads at once (copy it instead).
#include <Eigen/Core>
#include <Eigen/Geometry>
#include <limits>
#include <memory>
#include <string>
#include <vector>

class RkKinematicChain {
 public:
  enum class JointType { Revolute, Continuous, Prismatic };

  // One row of a standard DH table: the link transform is Rz(theta) Tz(d) Tx(a) Rx(alpha), where the joint
  // value adds to theta (revolute) or to d (prismatic).
  struct DhJoint {
    double a = 0.0;
    double d = 0.0;
    double alpha = 0.0;
    double theta = 0.0;
    bool prismatic = false;
    double lower = -std::numeric_limits<double>::infinity();
    double upper = std::numeric_limits<double>::infinity();
    double maxVelocity = std::numeric_limits<double>::infinity();
    std::string name;  // "joint<i>" (1-based) when empty
  };

  // Reads a URDF file and builds the chain from baseLink to tipLink by walking up from the tip. An empty
  // baseLink means the URDF root link; an empty tipLink means the deepest link below the base (most joints
  // of any type on the way), which must be unique. Supports revolute, continuous, prismatic and fixed joints
  // on the chain; other links hanging off it are ignored. Returns null and sets error to one line
  // "<path>: <problem>" on failure; nothing is printed.
  static std::unique_ptr<RkKinematicChain> fromUrdfFile(const std::string& path, const std::string& baseLink,
                                                        const std::string& tipLink, std::string& error);
  // As fromUrdfFile, from URDF text; sourceName stands for the file name in the error line.
  static std::unique_ptr<RkKinematicChain> fromUrdfString(const std::string& urdf,
                                                          const std::string& sourceName,
                                                          const std::string& baseLink,
                                                          const std::string& tipLink, std::string& error);
  // Builds a chain from a DH table. Links are named "base" (the chain's frame), "link0" (DH frame 0, at
  // `base` in the chain's frame), "link1".."linkN" (DH frame i) and "tool" (at `tool` in DH frame N), the
  // tip. Returns null and sets error to one line "<sourceName>: <problem>" on failure.
  static std::unique_ptr<RkKinematicChain> fromDh(const std::vector<DhJoint>& table,
                                                  const Eigen::Isometry3d& base,
                                                  const Eigen::Isometry3d& tool,
                                                  const std::string& sourceName, std::string& error);

  RkKinematicChain(const RkKinematicChain& other);
  RkKinematicChain& operator=(const RkKinematicChain& other);
  ~RkKinematicChain();

  // Movable joints, in order from the base.
  int jointCount() const;
  const std::vector<std::string>& jointNames() const;
  const std::vector<JointType>& jointTypes() const;
  // Position limits (continuous joints: -inf, +inf) and velocity limits (+inf when not given).
  const Eigen::VectorXd& lowerLimits() const;
  const Eigen::VectorXd& upperLimits() const;
  const Eigen::VectorXd& velocityLimits() const;
  // Changes the limits of joint i; false (nothing changed) when i is out of range, lower > upper, a value is
  // NaN or maxVelocity <= 0.
  bool setJointLimits(int i, double lower, double upper, double maxVelocity);

  // Links from the base (index 0) to the tip (last), including those behind fixed joints.
  const std::vector<std::string>& linkNames() const;
  const std::string& baseLink() const { return linkNames().front(); }
  const std::string& tipLink() const { return linkNames().back(); }
  // Index in linkNames(), or -1.
  int linkIndex(const std::string& name) const;
  // Index in linkNames() of the link that joint i moves (its child link), or -1 when i is out of range.
  int jointLinkIndex(int i) const;

  // Placement of the tip, or of link `link` (an index in linkNames()), in the base frame at joint positions
  // q. False when q does not have jointCount() entries or the link is out of range.
  bool tipPlacement(const Eigen::Ref<const Eigen::VectorXd>& q, Eigen::Isometry3d& out) const;
  bool linkPlacement(const Eigen::Ref<const Eigen::VectorXd>& q, int link, Eigen::Isometry3d& out) const;
  bool linkPlacement(const Eigen::Ref<const Eigen::VectorXd>& q, const std::string& link,
                     Eigen::Isometry3d& out) const;

  // Geometric Jacobian of the tip or of a link: rows 0-2 the linear velocity of the link's origin, rows 3-5
  // its angular velocity, both in the base frame; one column per joint (zero for joints beyond the link). out
  // must be 6 x jointCount(); false otherwise or when q or the link is invalid.
  bool tipJacobian(const Eigen::Ref<const Eigen::VectorXd>& q, Eigen::Ref<Eigen::MatrixXd> out) const;
  bool linkJacobian(const Eigen::Ref<const Eigen::VectorXd>& q, int link,
                    Eigen::Ref<Eigen::MatrixXd> out) const;

  // Both of the above for one link in a single pass over the chain, about twice as fast as the two calls;
  // what the controller uses every cycle.
  bool linkPlacementAndJacobian(const Eigen::Ref<const Eigen::VectorXd>& q, int link,
                                Eigen::Isometry3d& placement, Eigen::Ref<Eigen::MatrixXd> jacobian) const;

  // The frame of the link that joint i (0-based) moves. For a DH chain this is DH frame i+1 of the
  // convention (its z axis carries joint i+2); for a URDF chain it is the joint's child link frame, whose
  // origin is the joint origin and in which the joint axis is fixed.
  bool dhFrame(const Eigen::Ref<const Eigen::VectorXd>& q, int i, Eigen::Isometry3d& out) const;

 private:
  struct Impl;
  explicit RkKinematicChain(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> m_impl;
};
