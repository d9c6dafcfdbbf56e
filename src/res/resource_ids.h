#pragma once

// Ids of the dialog templates, their controls and the string table. Read by the resource compiler and by C++.
// A control has the same id in all three order templates (order, carry, exercise), which hold the same 96
// controls; the fill template shares the ids of the controls that it has in common with them.

// Dialog templates.
#define IDD_ORDER                                278
#define IDD_CARRY                                279
#define IDD_FILL                                 280
#define IDD_EXERCISE                             4490

// Account, order identity and kind.
#define IDC_ACCOUNT_LABEL                        1027
#define IDC_ACCOUNT                              1037
#define IDC_UPPER_LABEL                          1044
#define IDC_UPPER                                1039
#define IDC_SOURCE_LABEL                         1118
#define IDC_SOURCE                               1126
#define IDC_SYSTEM_NO_LABEL                      1047
#define IDC_SYSTEM_NO                            1054
#define IDC_FILL_NO_LABEL                        1152
#define IDC_FILL_NO                              1153
#define IDC_EX_SYSTEM_NO_LABEL                   1239
#define IDC_EX_SYSTEM_NO                         1240
#define IDC_ORDER_TYPE_LABEL                     1050
#define IDC_ORDER_TYPE                           1053
#define IDC_ORDER_STATE_LABEL                    1041
#define IDC_ORDER_STATE                          1040
#define IDC_VALID_TYPE_LABEL                     1113
#define IDC_VALID_TYPE                           1114
#define IDC_VALID_DATE_LABEL                     1011
#define IDC_VALID_DATE                           1012

// Contract and direction.
#define IDC_CONTRACT_LABEL                       1055
#define IDC_CONTRACT                             10001
#define IDC_CONTRACT_PICK                        10000
#define IDC_DIRECTION_LABEL                      1035
#define IDC_DIRECTION                            1052
#define IDC_FORWARD_DIRECTION_LABEL              1187
#define IDC_FORWARD_DIRECTION                    1188
#define IDC_FORWARD_CONTRACT_LABEL               1191
#define IDC_FORWARD_CONTRACT                     1192  // the underlying contract in the exercise dialog

// Quantities.
#define IDC_ORDER_QTY_LABEL                      1124
#define IDC_ORDER_QTY                            1125
#define IDC_ORDER_QTY_SPIN                       1127
#define IDC_FILL_QTY_LABEL                       1128
#define IDC_FILL_QTY                             1129
#define IDC_FILL_QTY_SPIN                        1130
#define IDC_FORWARD_FILL_QTY_LABEL               1215
#define IDC_FORWARD_FILL_QTY                     1216
#define IDC_NEAR_POSITION_QTY_LABEL              1210
#define IDC_NEAR_POSITION_QTY                    1213
#define IDC_FORWARD_POSITION_QTY_LABEL           1211
#define IDC_FORWARD_POSITION_QTY                 1214

// Price rows.
#define IDC_ORDER_PRICE_LABEL                    1131
#define IDC_ORDER_PRICE_WHOLE                    1132
#define IDC_ORDER_PRICE_SPIN                     1133
#define IDC_ORDER_PRICE_PLUS                     1134
#define IDC_ORDER_PRICE_NUMERATOR                1136
#define IDC_ORDER_PRICE_SLASH                    1137
#define IDC_ORDER_PRICE_DENOMINATOR              1135

#define IDC_TRIGGER_PRICE_LABEL                  1138
#define IDC_TRIGGER_PRICE_WHOLE                  1139
#define IDC_TRIGGER_PRICE_SPIN                   1155
#define IDC_TRIGGER_PRICE_PLUS                   1140
#define IDC_TRIGGER_PRICE_NUMERATOR              1141
#define IDC_TRIGGER_PRICE_SLASH                  1142
#define IDC_TRIGGER_PRICE_DENOMINATOR            1143

#define IDC_FILL_PRICE_LABEL                     1144
#define IDC_FILL_PRICE_WHOLE                     1145
#define IDC_FILL_PRICE_SPIN                      1146
#define IDC_FILL_PRICE_PLUS                      1147
#define IDC_FILL_PRICE_NUMERATOR                 1148
#define IDC_FILL_PRICE_SLASH                     1159
#define IDC_FILL_PRICE_DENOMINATOR               1150

#define IDC_FILL_PRICE2_LABEL                    1156
#define IDC_FILL_PRICE2_WHOLE                    1160
#define IDC_FILL_PRICE2_SPIN                     1161
#define IDC_FILL_PRICE2_PLUS                     1181
#define IDC_FILL_PRICE2_NUMERATOR                1182
#define IDC_FILL_PRICE2_SLASH                    1184
#define IDC_FILL_PRICE2_DENOMINATOR              1185

#define IDC_NEAR_POSITION_PRICE_LABEL            1151
#define IDC_NEAR_POSITION_PRICE_WHOLE            1154
#define IDC_NEAR_POSITION_PRICE_SPIN             1162
#define IDC_NEAR_POSITION_PRICE_PLUS             1163
#define IDC_NEAR_POSITION_PRICE_NUMERATOR        1165
#define IDC_NEAR_POSITION_PRICE_SLASH            1169
#define IDC_NEAR_POSITION_PRICE_DENOMINATOR      1170

#define IDC_FORWARD_POSITION_PRICE_LABEL         1171
#define IDC_FORWARD_POSITION_PRICE_WHOLE         1172
#define IDC_FORWARD_POSITION_PRICE_SPIN          1173
#define IDC_FORWARD_POSITION_PRICE_PLUS          1174
#define IDC_FORWARD_POSITION_PRICE_NUMERATOR     1189
#define IDC_FORWARD_POSITION_PRICE_SLASH         1193
#define IDC_FORWARD_POSITION_PRICE_DENOMINATOR   1194

// Check boxes, currency, fee, buttons.
#define IDC_FORCE_CLOSE                          1123
#define IDC_NEAR_CHOSEN_POSITION                 1243  // close the position at a chosen price
#define IDC_FORWARD_CHOSEN_POSITION              1244
#define IDC_CURRENCY_LABEL                       1166
#define IDC_CURRENCY                             1164
#define IDC_FEE_GIVEN                            1186
#define IDC_FEE_LABEL                            1168  // always hidden: the check box before the edit names it
#define IDC_FEE                                  1167
#define IDC_CARRY_FEE_TEXT                       1015  // forward premium or discount of a carry
#define IDC_NEAR_SEPARATOR                       1212  // lower border of the near position list
#define IDC_FORWARD_SEPARATOR                    1217  // lower border of the forward position list
#define IDC_CONFIRM                              1061
#define IDC_CANCEL                               1067

// The fill dialog alone. Where a number stands above too, it has another role here.
#define IDC_FILL_SOURCE_LABEL                    1157
#define IDC_FILL_SOURCE                          1158
#define IDC_EXCHANGE_LABEL                       1121
#define IDC_EXCHANGE                             1122
#define IDC_COMMODITY_LABEL                      1034
#define IDC_COMMODITY                            1051
#define IDC_FILL_CONTRACT                        1056
#define IDC_OPEN_CONTRACT_LABEL                  1057
#define IDC_OPEN_CONTRACT                        1058
#define IDC_OPEN_DIRECTION_LABEL                 1036
#define IDC_OPEN_DIRECTION                       1053
#define IDC_FILL_FEE_GIVEN                       1165

// Titles and confirm buttons of the order dialog; the carry fee text.
#define IDS_FORWARD_DISCOUNT                 10000  // %.2f
#define IDS_FORWARD_PREMIUM                  10001  // %.2f
#define IDS_COVER_FEE                        10002
#define IDS_MODIFY_ORDER_TITLE               10003  // %d
#define IDS_MODIFY                           10004
#define IDS_REMOVE_FILLED_TITLE              10005  // %d
#define IDS_REMOVE                           10006
#define IDS_MOVE_ORDER_TITLE                 10007  // %d, %s
#define IDS_MOVE                             10008
#define IDS_EXERCISE                         10009
#define IDS_INPUT_ORDER_TITLE                10010
#define IDS_INPUT                            10011

// Checks of the order dialog. The messages that can stand together in one box end in a line break.
#define IDS_ACCOUNT_EMPTY                    10012
#define IDS_UPPER_EMPTY                      10013
#define IDS_CONTRACT_EMPTY                   10014
#define IDS_NEAR_CONTRACT_EMPTY              10015
#define IDS_UNDERLYING_EMPTY                 10016
#define IDS_FORWARD_CONTRACT_EMPTY           10017
#define IDS_DIRECTION_EMPTY                  10018
#define IDS_NO_COMMODITY                     10019
#define IDS_ORDER_PRICE_NOT_TICKS            10020
#define IDS_TRIGGER_PRICE_NOT_TICKS          10021
#define IDS_NO_CONTRACT                      10022
#define IDS_NO_NEAR_CONTRACT                 10023
#define IDS_CONTRACT_IS_3M_DATE              10024
#define IDS_NO_UNDERLYING_DATE               10025
#define IDS_NO_UNDERLYING                    10026
#define IDS_NO_FORWARD_CONTRACT              10027
#define IDS_ORDER_TYPE_EMPTY                 10028
#define IDS_ORDER_STATE_EMPTY                10029
#define IDS_SOURCE_EMPTY                     10030
#define IDS_VALID_TYPE_EMPTY                 10031
#define IDS_ORDER_PRICE_ZERO                 10032
#define IDS_ORDER_QTY_ZERO                   10033
#define IDS_TRIGGER_PRICE_ZERO               10034
#define IDS_NO_ORIGINAL_ORDER                10035
#define IDS_FILL_NO_EMPTY                    10036
#define IDS_FILL_QTY_NOT_POSITIVE            10037
#define IDS_FILL_QTY_ABOVE_ORDER             10038
#define IDS_FILL_QTY_NOT_OF_STATE            10039
#define IDS_OPERATION_FAILED                 10040
#define IDS_FILL_PRICE_NOT_TICKS             10041
#define IDS_FILL_PRICE_ZERO                  10042
#define IDS_FILL_PRICE2_NOT_TICKS            10043
#define IDS_FILL_PRICE2_ZERO                 10044
#define IDS_CONFIRM_WARNINGS                 10045
#define IDS_CONFIRM_CAPTION                  10046
#define IDS_CONFIRM_NOT_INPUT                10047

// Carry, sending and its failures.
#define IDS_NO_FORWARD_DATE                  10048
#define IDS_SAME_CARRY_CONTRACTS             10049
#define IDS_CARRY_FAILED_CAPTION             10050
#define IDS_CARRY_CONTRACTS_REVERSED         10051
#define IDS_ORDER_EXISTS                     10052
#define IDS_INPUT_FAILED_CAPTION             10053
#define IDS_NO_SPREAD_CARRY                  10054
#define IDS_ORDER_ALREADY_FILLED             10055
#define IDS_SEND_INPUT_FAILED                10056
#define IDS_SEND_MODIFY_FAILED               10057
#define IDS_SEND_REMOVE_FAILED               10058
#define IDS_SAME_ACCOUNT                     10059
#define IDS_MOVE_FAILED_CAPTION              10060
#define IDS_SEND_EXERCISE_FAILED             10061
#define IDS_OK                               10062

// Fill dialog.
#define IDS_MODIFY_FILL_TITLE                10063
#define IDS_REMOVE_FILL_TITLE                10064  // %s
#define IDS_INPUT_FILL_TITLE                 10065  // %d
#define IDS_FILL_DIALOG_PRICE_NOT_TICKS      10066
#define IDS_SAME_CLOSE_OPEN_CONTRACTS        10067
#define IDS_CLOSE_OPEN_CONTRACTS_REVERSED    10068
// Two %s: direction and contract in English, contract and direction in Chinese.
#define IDS_NO_CLOSE_POSITION                10069

// Words of the code tables.
#define IDS_DIRECTION_BUY                    10070
#define IDS_DIRECTION_SELL                   10071
#define IDS_DIRECTION_DOUBLE                 10072
#define IDS_DIRECTION_BUY_PADDED             10073
#define IDS_DIRECTION_SELL_PADDED            10074
#define IDS_STATE_SENDED                     10075
#define IDS_STATE_REJECTED                   10076
#define IDS_STATE_ACCEPTED                   10077
#define IDS_STATE_SUSPENDED                  10078
#define IDS_STATE_WORKING                    10079
#define IDS_STATE_CANCELING                  10080
#define IDS_STATE_MODIFYING                  10081
#define IDS_STATE_PARTIAL_CANCELED           10082
#define IDS_STATE_CANCELED                   10083
#define IDS_STATE_PARTIALLY_FILLED           10084
#define IDS_STATE_FILLED                     10085
#define IDS_STATE_EXECUTED                   10086
#define IDS_SOURCE_PROXY                     10087
#define IDS_SOURCE_MANUAL                    10088
#define IDS_SOURCE_CARRY                     10089
#define IDS_SOURCE_PROGRAM                   10090
#define IDS_SOURCE_DELIVERY_EXERCISE         10091
#define IDS_ALL                              10092
#define IDS_TYPE_LIMIT                       10093
#define IDS_TYPE_MARKET                      10094
#define IDS_TYPE_LIMIT_STOP                  10095
#define IDS_TYPE_STOP_LOSS                   10096
#define IDS_TYPE_ENQUIRY                     10097
#define IDS_TYPE_OFFER                       10098
#define IDS_TYPE_EXERCISE                    10099
#define IDS_TYPE_ABSTAIN                     10100
#define IDS_TYPE_ICE                         10101
#define IDS_TYPE_GHOST                       10102
#define IDS_TYPE_SWAPS                       10103
#define IDS_VALID_FOK                        10104
#define IDS_VALID_IOC                        10105
#define IDS_VALID_GFD                        10106
#define IDS_VALID_GTC                        10107
#define IDS_VALID_GTD                        10108
#define IDS_VALID_FOK_LONG                   10109
#define IDS_VALID_IOC_LONG                   10110
#define IDS_VALID_GFD_LONG                   10111
#define IDS_VALID_GTC_LONG                   10112
#define IDS_VALID_GTD_LONG                   10113

// Questions; the remaining sources.
#define IDS_TIPS                             10114
#define IDS_ASK_NEXT_ORDER                   10115
#define IDS_ASK_FEW_POSITIONS                10116
#define IDS_SOURCE_E_TRADE                   10117
#define IDS_SOURCE_J_TRADE                   10118
#define IDS_SOURCE_RTS                       10119
#define IDS_ASK_FILL_ABOVE_REMAINING         10120
