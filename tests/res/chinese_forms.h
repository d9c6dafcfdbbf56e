#pragma once

// Every simplified character of the texts and labels that has a traditional form, each followed by that form.
constexpr char kChineseForms[] =
    "与與为為买買于於仓倉价價余餘写寫删刪动動单單卖賣双雙发發变變台臺号號后後吗嗎实實对對录錄态態应應开開当當执執"
    "报報挂掛损損换換断斷时時权權来來标標样樣没沒状狀电電确確类類约約继繼续續认認记記设設询詢该該请請败敗贴貼费費"
    "资資转轉输輸边邊远遠长長队隊须須币幣强強种種统統触觸帐帳托託数數弃棄";
