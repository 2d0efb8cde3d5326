#pragma once
// A vector of three reals (a position, a direction or an axis) on Eigen.
#include <Eigen/Core>

#include "foundation/RkTypes.h"

class RkVector {
 public:
  RkVector() : m_value(Eigen::Vector3d::Zero()) {}
  RkVector(RkReal x, RkReal y, RkReal z) : m_value(x, y, z) {}
  explicit RkVector(const Eigen::Vector3d& value) : m_value(value) {}

  RkReal x() const { return m_value.x(); }
  RkReal y() const { return m_value.y(); }
  RkReal z() const { return m_value.z(); }
  RkReal operator[](int index) const { return m_value[index]; }
  RkReal& operator[](int index) { return m_value[index]; }
  const Eigen::Vector3d& eigen() const { return m_value; }

  RkVector operator+(const RkVector& other) const { return RkVector(m_value + other.m_value); }
  RkVector operator-(const RkVector& other) const { return RkVector(m_value - other.m_value); }
  RkVector operator-() const { return RkVector(-m_value); }
  RkVector operator*(RkReal factor) const { return RkVector(m_value * factor); }
  RkVector operator/(RkReal divisor) const { return RkVector(m_value / divisor); }
  RkVector& operator+=(const RkVector& other);
  RkVector& operator-=(const RkVector& other);
  RkVector& operator*=(RkReal factor);

  RkReal dot(const RkVector& other) const { return m_value.dot(other.m_value); }
  RkVector cross(const RkVector& other) const { return RkVector(m_value.cross(other.m_value)); }
  RkReal norm() const { return m_value.norm(); }
  RkReal squaredNorm() const { return m_value.squaredNorm(); }
  // The vector scaled to length 1; the zero vector stays zero.
  RkVector normalized() const;

  // Exact, component by component.
  bool operator==(const RkVector& other) const { return m_value == other.m_value; }
  bool operator!=(const RkVector& other) const { return !(*this == other); }
  // Every component within tolerance of the other's.
  bool approxEq(const RkVector& other, RkReal tolerance) const;

  static RkVector xVector(RkReal length = 1.0) { return RkVector(length, 0.0, 0.0); }
  static RkVector yVector(RkReal length = 1.0) { return RkVector(0.0, length, 0.0); }
  static RkVector zVector(RkReal length = 1.0) { return RkVector(0.0, 0.0, length); }

 private:
  Eigen::Vector3d m_value;
};

inline RkVector operator*(RkReal factor, const RkVector& vector) {
  return vector * factor;
}
