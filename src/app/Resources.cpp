#include "app/Resources.h"

#include <QtGlobal>

void InitResources() {
    Q_INIT_RESOURCE(resources);
}
