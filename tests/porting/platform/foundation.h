// The module asks nothing of the foundation library as yet; the header has to be there all the same.
#pragma once
