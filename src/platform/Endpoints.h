#pragma once

#include <QString>

// Network end points the program talks to. Tests point them at a server on loopback,
// through an environment variable or a settings-store value; the environment wins.
namespace platform {

// TESSAVIEW_FLICKR_REST, or settings value flickrRestUrl.
QString FlickrRestEndpoint();
// TESSAVIEW_FLICKR_PHOTOS, or settings value flickrPhotoHost. No trailing separator.
QString FlickrPhotoHost();
// TESSAVIEW_HELP_URL, or settings value helpUrl: the help pages on the web.
QString OnlineHelpUrl();

} // namespace platform
