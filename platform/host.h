// The CAD host: drawing databases, the runtime, documents, allocators and result buffers.
// One of the four headers of the platform that the module includes.
#pragma once

#include "host/application.h"
#include "host/database.h"
#include "host/decomposition.h"
#include "host/dictionary.h"
#include "host/error_status.h"
#include "host/geodata.h"
#include "host/memory.h"
#include "host/object.h"
#include "host/resbuf.h"
#include "host/runtime.h"
#include "host/symbol_table.h"
#include "host/transaction.h"
#include "host/xrecord.h"
