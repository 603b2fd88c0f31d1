// What the simulated terminals keep of the media family: each device's
// library of stored media (photos, recordings, videos) and the uploads asked of it.
#pragma once

#include <string>
#include <vector>

namespace hostref::terminals {

struct StoredMedia {
  int id = 0;
  int type = 0;      // 0 image, 1 audio, 2 video
  int channel = 0;
  int event = 0;     // what made the terminal take it (0: a platform command)
  std::string time;  // "YYYY-MM-DD hh:mm:ss"
};
// The device's library, oldest first (a device starts with a few items taken today).
std::vector<StoredMedia> MediaLibrary(const std::string& devIdno);
// The ids the device was asked to upload, in order.
std::vector<int> UploadedMedia(const std::string& devIdno);

}  // namespace hostref::terminals
