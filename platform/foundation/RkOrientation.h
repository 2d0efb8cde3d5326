#pragma once
// An orientation held as a unit quaternion on Eigen. a * b applies b, then a.
#include <Eigen/Geometry>

#include "foundation/RkVector.h"

class RkOrientation {
 public:
  RkOrientation() : m_value(Eigen::Quaterniond::Identity()) {}
  // From quaternion components; the result is normalised (a zero quaternion gives the identity).
  RkOrientation(RkReal w, RkReal x, RkReal y, RkReal z);
  explicit RkOrientation(const Eigen::Quaterniond& value);
  // A rotation of angle (radians) about axis; a zero axis gives the identity.
  static RkOrientation fromAngleAxis(RkReal angle, const RkVector& axis);

  RkReal w() const { return m_value.w(); }
  RkReal x() const { return m_value.x(); }
  RkReal y() const { return m_value.y(); }
  RkReal z() const { return m_value.z(); }
  const Eigen::Quaterniond& eigen() const { return m_value; }
  Eigen::Matrix3d matrix() const { return m_value.toRotationMatrix(); }

  RkOrientation operator*(const RkOrientation& other) const;
  RkVector operator*(const RkVector& vector) const { return RkVector(m_value * vector.eigen()); }
  RkOrientation inverse() const { return RkOrientation(m_value.conjugate()); }

  // Sets the orientation from the rows of a direction-cosine matrix, normalising the result.
  void setFromDcmRows(const RkVector& row0, const RkVector& row1, const RkVector& row2);
  // Shortest-path spherical interpolation: s = 0 gives from, s = 1 gives to.
  static RkOrientation interpolation(const RkOrientation& from, const RkOrientation& to, RkReal s);
  // The rotation that takes a to b, as an angle in [0, pi] and a unit axis (x for a zero angle).
  static void angleAxisBetween(const RkOrientation& a, const RkOrientation& b, RkReal& angle, RkVector& axis);
  // The rotation angle of this orientation, in [0, pi].
  RkReal angle() const;

  // Exact, component by component (q and -q differ here).
  bool operator==(const RkOrientation& other) const { return m_value.coeffs() == other.m_value.coeffs(); }
  bool operator!=(const RkOrientation& other) const { return !(*this == other); }
  // The same rotation within tolerance radians (q and -q are the same rotation).
  bool approxEq(const RkOrientation& other, RkReal tolerance) const;

 private:
  Eigen::Quaterniond m_value;
};
