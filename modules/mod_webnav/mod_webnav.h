#pragma once

#include "module_export.h"

#include <string>

/// Opens pages in the user's web browser. GUI thread.

/// A page of the product's site by its number: 3 the service request, 11 the documentation, 12 the notification centre.
/// Any other number opens the first page of the site.
MODULE_EXPORT void webnav_dyn_locate_to_web_page_based_on_enum(int page);

/// A page by its address, as a user would type it.
MODULE_EXPORT void webnav_dyn_locate_to_web_page_based_on_url(const std::string& url);

/// A page by an address that is percent-encoded already.
MODULE_EXPORT void webnav_dyn_go_to_encoded_url(const std::string& url);
