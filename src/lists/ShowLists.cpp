// The show's side of the image lists.
#include "show/frmSlideShow.h"

// STAND-IN until the image pool exists: there are no lists to load, so the show falls back on
// the internal logo.
void frmSlideShow::LoadImageLists() {
    ShowList.clear();
    CaptionsList.clear();
}

// STAND-IN until the remaining list exists: nothing is written.
void frmSlideShow::SaveRemainingList() {}
