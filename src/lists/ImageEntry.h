#pragma once

#include <QString>

// An image entry is the string that names one image in the show's lists. It has one of three
// forms:
//   a local path, as a folder list's "IMAGE>" record holds it;
//   "web::" list name "::" URL "::" list title, for an image of a web page or a Flickr list;
//   "INTERNAL:" number, for a picture the program carries inside itself.

// "web::" at the front: the image lives on the web and comes through the list's cache.
bool IsWebEntry(const QString& entry);
// The first eight characters read "INTERNAL".
bool IsInternalEntry(const QString& entry);
// The entry of a web or Flickr list's image. Nothing is escaped: a "::" inside the URL or the
// title splits the entry there when it is read back.
QString MakeWebEntry(const QString& listName, const QString& url, const QString& listTitle);
// Field 2 of the entry split on "::", trimmed; empty when there is none.
QString GetURLfromEntry(const QString& entry);
// Field 3 of the entry split on "::", trimmed; empty when there is none.
QString GetTitleFromEntry(const QString& entry);
// The key under which the random-folder orders group images: the folder of a local path up to
// and including its last separator (the whole entry when there is none), and for a web entry
// "web::" list name "::", so that every image of one web source shares a key.
QString FolderKeyOf(const QString& entry);
