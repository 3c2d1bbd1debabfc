#pragma once

#include <oaidl.h>
