#pragma once

namespace kpx::test {

class Guide;

/// From an empty folder, with mouse and keys only: the four lists, an initial prescription and its
/// refills until none remain, filter, sort, change, and the deletion of the whole prescription.
void liveAWholeStory(Guide& guide);

/// All seven reports at once and the table as shown, each in its preview; they are left as PDFs beside
/// the pictures.
void printAllReports(Guide& guide);

}  // namespace kpx::test
