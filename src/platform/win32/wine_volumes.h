// Wine calls every drive "NTFS" and gives none of them a change journal, save by a driver.
#pragma once

namespace quilmark {

// Whether the program runs under Wine.
bool IsWine();

// Where the records of a drive can be had from.
enum class RecordSource {
  kNone,      // its folders alone
  kDevice,    // the control codes of its device
  kRawBytes,  // its device gives the bytes of an NTFS volume and no control codes
};

// Asks the device of the drive, which it opens for that. kNone where it cannot be opened.
RecordSource RecordSourceOf(char16_t letter);

}  // namespace quilmark
