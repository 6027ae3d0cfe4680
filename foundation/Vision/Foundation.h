#pragma once

#include "Vision/Core/Archive.h"
#include "Vision/Core/ChangedEvent.h"
#include "Vision/Core/CollectionBase.h"
#include "Vision/Core/CollectionInterfaces.h"
#include "Vision/Core/Event.h"
#include "Vision/Core/Exceptions.h"
#include "Vision/Core/Meta.h"
#include "Vision/Core/Object.h"
#include "Vision/Core/Platform.h"
#include "Vision/Core/ReadOnlyCollectionBase.h"
#include "Vision/Core/Transform2D.h"
