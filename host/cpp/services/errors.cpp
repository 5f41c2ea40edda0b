#include "err.h"

#include "services/session.h"

void ErrClassErrType::Set(int error) {
    if (error) host::session().errors.emplace_back(source_, error);
}
