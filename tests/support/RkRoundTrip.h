#pragma once
// The generic round trip every serialisable class must pass: write, read back, compare with == and with
// the virtual equality, and write again to the same bytes. Also checks that clone and newObject give the
// class itself.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "xml/RkXmlObject.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

template <class T>
::testing::AssertionResult roundTrips(const T& object) {
  std::string first;
  if (!RkXmlWriter::writeString(object, first)) return ::testing::AssertionFailure() << "write failed";
  T read;
  if (!RkXmlReader::readString(first, read))
    return ::testing::AssertionFailure() << "read failed:\n" << first;
  if (!(read == object)) return ::testing::AssertionFailure() << "read back differs:\n" << first;
  if (!read.equality(&object) || read.equality(nullptr)) {
    return ::testing::AssertionFailure() << "equality disagrees with ==";
  }
  std::string second;
  RkXmlWriter::writeString(read, second);
  if (second != first)
    return ::testing::AssertionFailure() << "second write differs:\n" << first << "\n" << second;
  std::unique_ptr<RkXmlObject> copy(object.clone());
  std::unique_ptr<RkXmlObject> fresh(object.newObject());
  if (!copy->equality(&object) || !dynamic_cast<T*>(fresh.get())) {
    return ::testing::AssertionFailure() << "clone or newObject is not of the class";
  }
  return ::testing::AssertionSuccess();
}
