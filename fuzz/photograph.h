// A photograph read into the session's records, for targets whose texts refer to a file.
#pragma once

#include "common/camera.h"
#include "common/jpeg_builder.h"
#include "encode/template.h"
#include "harness.h"
#include "read/read_image_file.h"

namespace tagmend::fuzz {

/// The records, which the first call fills.
inline Session& photograph() {
  static Session session = open_session();
  static bool loaded = false;
  if (!loaded) {
    loaded = true;
    using namespace test;
    Bytes file =
        jpeg({source_exif(true, camera()),
              app13_photoshop({resource(1028, "",
                                        joined({dataset(2, 25, "one"), dataset(2, 25, "two"),
                                                dataset(2, 120, "A \"caption\"")}))}),
              picture()});
    ReadContext context = test::context_of(session);
    static_cast<void>(read_image_file(context, "", "", file, false));
    copy_text(session.image.file_name, "archive.tar.jpg");
    copy_text(session.image.directory, "pictures");
    copy_text(session.image.path, "pictures/archive.tar.jpg");
  }
  return session;
}

inline SubstitutionContext substitution() {
  Session& session = photograph();
  return {.image = &session.image, .iptc = &session.iptc, .dataset_text = &iptc_dataset_text};
}

}  // namespace tagmend::fuzz
