#include <repository.h>

#include "ole/server.h"
#include "repository/com/repository.h"
#include "repository/com/uuid_generator.h"

namespace {

constexpr ole::Class classes[] = {
    {CLSID_Repository, ole::MakeClass<repository::com::Repository>},
    {CLSID_UUIDGenerator, ole::MakeClass<repository::com::UUIDGenerator>},
};

}  // namespace

const ole::ServerDescription ole::server = {LIBID_OrvaneRepository, L"OrvaneRepository.X", classes};
