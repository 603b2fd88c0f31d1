// The columns of the result list under every page: what a row holds where.
// The list's setup, the rows, the export and the tests all read them here.
#pragma once

enum ResultColumn : int {
  kColNumber = 0,       // running number, the newest row on top
  kColVehicle = 1,      // vehicle and device
  kColTime = 2,         // when the row was added
  kColFunction = 3,     // the page's function name
  kColResult = 4,       // succeeded, or the error
  kColDescription = 5,  // what was sent, or what came back
  kColUnused = 6,       // left empty
  kColStatus = 7,       // the status word that colours the row
  kVisibleColumns = 6,  // columns 0 to 5 are shown
  kColumnCount = 8,
};
