// The functions of PROJ that this library calls, found when the first of them is called.
//
// Linking PROJ brings some forty libraries, which take longer to load than most commands take to run. Half of the
// commands of a program on this platform need none of it. So where PROJ is a shared library, it is loaded by the first
// call. The functions below hide those of <proj.h> and <geodesic.h> in this namespace; a call that is missing here does
// not link.
#pragma once

#include <geodesic.h>
#include <proj.h>

#ifdef ORVEL_PROJ_LIBRARY

#include <atomic>
#include <type_traits>

namespace Embedded {

/// The address of a function of PROJ. Throws std::runtime_error if PROJ cannot be loaded or lacks the function.
void* projFunction(const char* name);

template <typename Function>
class ProjFunction;

template <typename Result, typename... Arguments>
class ProjFunction<Result(Arguments...)> {
public:
    explicit constexpr ProjFunction(const char* name) : name_(name) {}

    Result operator()(Arguments... arguments) const
    {
        auto* function = function_.load(std::memory_order_relaxed);
        if (function == nullptr) {
            function = reinterpret_cast<Result (*)(Arguments...)>(projFunction(name_));
            function_.store(function, std::memory_order_relaxed);
        }
        return function(arguments...);
    }

private:
    const char* name_;
    mutable std::atomic<Result (*)(Arguments...)> function_ = nullptr;
};

#define ORVEL_PROJ_FUNCTION(name) inline const ProjFunction<decltype(::name)> name(#name)

ORVEL_PROJ_FUNCTION(geod_init);
ORVEL_PROJ_FUNCTION(geod_inverse);
ORVEL_PROJ_FUNCTION(proj_as_proj_string);
ORVEL_PROJ_FUNCTION(proj_as_projjson);
ORVEL_PROJ_FUNCTION(proj_as_wkt);
ORVEL_PROJ_FUNCTION(proj_clone);
ORVEL_PROJ_FUNCTION(proj_concatoperation_get_step);
ORVEL_PROJ_FUNCTION(proj_concatoperation_get_step_count);
ORVEL_PROJ_FUNCTION(proj_context_create);
ORVEL_PROJ_FUNCTION(proj_context_errno_string);
ORVEL_PROJ_FUNCTION(proj_context_get_database_metadata);
ORVEL_PROJ_FUNCTION(proj_context_get_database_path);
ORVEL_PROJ_FUNCTION(proj_context_get_user_writable_directory);
ORVEL_PROJ_FUNCTION(proj_context_is_network_enabled);
ORVEL_PROJ_FUNCTION(proj_context_set_enable_network);
ORVEL_PROJ_FUNCTION(proj_context_set_search_paths);
ORVEL_PROJ_FUNCTION(proj_coord);
ORVEL_PROJ_FUNCTION(proj_coordoperation_get_accuracy);
ORVEL_PROJ_FUNCTION(proj_coordoperation_get_grid_used);
ORVEL_PROJ_FUNCTION(proj_coordoperation_get_grid_used_count);
ORVEL_PROJ_FUNCTION(proj_coordoperation_get_method_info);
ORVEL_PROJ_FUNCTION(proj_coordoperation_get_param);
ORVEL_PROJ_FUNCTION(proj_coordoperation_has_ballpark_transformation);
ORVEL_PROJ_FUNCTION(proj_coordoperation_is_instantiable);
ORVEL_PROJ_FUNCTION(proj_create);
ORVEL_PROJ_FUNCTION(proj_create_crs_to_crs_from_pj);
ORVEL_PROJ_FUNCTION(proj_create_from_database);
ORVEL_PROJ_FUNCTION(proj_create_from_name);
ORVEL_PROJ_FUNCTION(proj_create_from_wkt);
ORVEL_PROJ_FUNCTION(proj_create_operation_factory_context);
ORVEL_PROJ_FUNCTION(proj_create_operations);
ORVEL_PROJ_FUNCTION(proj_crs_get_coordinate_system);
ORVEL_PROJ_FUNCTION(proj_crs_get_coordoperation);
ORVEL_PROJ_FUNCTION(proj_crs_get_datum_forced);
ORVEL_PROJ_FUNCTION(proj_crs_get_geodetic_crs);
ORVEL_PROJ_FUNCTION(proj_crs_get_sub_crs);
ORVEL_PROJ_FUNCTION(proj_cs_get_axis_count);
ORVEL_PROJ_FUNCTION(proj_cs_get_axis_info);
ORVEL_PROJ_FUNCTION(proj_cs_get_type);
ORVEL_PROJ_FUNCTION(proj_destroy);
ORVEL_PROJ_FUNCTION(proj_ellipsoid_get_parameters);
ORVEL_PROJ_FUNCTION(proj_errno);
ORVEL_PROJ_FUNCTION(proj_errno_reset);
ORVEL_PROJ_FUNCTION(proj_get_area_of_use);
ORVEL_PROJ_FUNCTION(proj_get_authorities_from_database);
ORVEL_PROJ_FUNCTION(proj_get_ellipsoid);
ORVEL_PROJ_FUNCTION(proj_get_id_auth_name);
ORVEL_PROJ_FUNCTION(proj_get_id_code);
ORVEL_PROJ_FUNCTION(proj_get_name);
ORVEL_PROJ_FUNCTION(proj_get_non_deprecated);
ORVEL_PROJ_FUNCTION(proj_get_prime_meridian);
ORVEL_PROJ_FUNCTION(proj_get_source_crs);
ORVEL_PROJ_FUNCTION(proj_get_target_crs);
ORVEL_PROJ_FUNCTION(proj_get_type);
ORVEL_PROJ_FUNCTION(proj_info);
ORVEL_PROJ_FUNCTION(proj_is_crs);
ORVEL_PROJ_FUNCTION(proj_is_deprecated);
ORVEL_PROJ_FUNCTION(proj_is_equivalent_to_with_ctx);
ORVEL_PROJ_FUNCTION(proj_list_destroy);
ORVEL_PROJ_FUNCTION(proj_list_get);
ORVEL_PROJ_FUNCTION(proj_list_get_count);
ORVEL_PROJ_FUNCTION(proj_log_func);
ORVEL_PROJ_FUNCTION(proj_log_level);
ORVEL_PROJ_FUNCTION(proj_normalize_for_visualization);
ORVEL_PROJ_FUNCTION(proj_operation_factory_context_destroy);
ORVEL_PROJ_FUNCTION(proj_operation_factory_context_set_allow_ballpark_transformations);
ORVEL_PROJ_FUNCTION(proj_operation_factory_context_set_allow_use_intermediate_crs);
ORVEL_PROJ_FUNCTION(proj_operation_factory_context_set_crs_extent_use);
ORVEL_PROJ_FUNCTION(proj_operation_factory_context_set_discard_superseded);
ORVEL_PROJ_FUNCTION(proj_operation_factory_context_set_grid_availability_use);
ORVEL_PROJ_FUNCTION(proj_operation_factory_context_set_spatial_criterion);
ORVEL_PROJ_FUNCTION(proj_operation_factory_context_set_use_proj_alternative_grid_names);
ORVEL_PROJ_FUNCTION(proj_pj_info);
ORVEL_PROJ_FUNCTION(proj_prime_meridian_get_parameters);
ORVEL_PROJ_FUNCTION(proj_string_list_destroy);
ORVEL_PROJ_FUNCTION(proj_trans);
ORVEL_PROJ_FUNCTION(proj_trans_generic);
ORVEL_PROJ_FUNCTION(proj_trans_get_last_used_operation);

#undef ORVEL_PROJ_FUNCTION

} // namespace Embedded

#endif
