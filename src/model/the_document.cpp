// The one document of the process.
#include "model/the_document.h"

namespace corvelin {

Document document;
Selection selection;

}  // namespace corvelin
