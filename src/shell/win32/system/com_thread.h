// COM for as long as a thread uses it.
#pragma once

#include <windows.h>

#include <objbase.h>

namespace quilmark {

// The apartment of the interface thread, from the start of the program to its end: what is dragged
// needs one of its own kind, which is not to be had once a thread is in the one of all others.
class InterfaceApartment {
 public:
  InterfaceApartment();
  ~InterfaceApartment();
  InterfaceApartment(const InterfaceApartment&) = delete;
  InterfaceApartment& operator=(const InterfaceApartment&) = delete;

 private:
  HRESULT result_;
};

// Makes COM usable on the calling thread, once for each: in the apartment of all threads, unless it is
// in another. Undone when the job that runs on the thread ends; on a thread that is no job of
// RunBackground, when the process does.
void UseComOnThisThread();

}  // namespace quilmark
